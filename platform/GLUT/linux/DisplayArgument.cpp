#include "DisplayArgument.h"

#include <string_view>

const char* DisplayArgument(int count, char** arguments) {
    const char* name = nullptr;
    for (int i = 1; i + 1 < count; ++i) {
        const std::string_view option = arguments[i];
        if (option == "-display") {
            name = arguments[++i];
        } else if (option == "-geometry") {
            ++i; // whatever it is, its value is no option
        }
    }
    return name == nullptr || *name == '\0' ? nullptr : name;
}
