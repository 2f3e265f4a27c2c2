#include "AlertText.h"

std::string Utf8(CFStringRef string) {
    std::string text(256, '\0');
    constexpr std::string::size_type longest = 1 << 20;
    while (CFStringGetCString(string, text.data(), static_cast<CFIndex>(text.size()),
                              kCFStringEncodingUTF8) == 0) {
        if (string == nullptr || text.size() >= longest) {
            return {};
        }
        text.resize(text.size() * 2);
    }
    text.resize(text.find('\0'));
    return text;
}
