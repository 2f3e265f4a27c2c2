// Prints on standard error what its standard output leads to. With an argument it also draws.
#include <Carbon/Carbon.h>
#include <objc/message.h>

#include <cstdio>
#include <filesystem>
#include <system_error>

bool AskAndOpen();

int main(int argumentCount, char** /*arguments*/) {
    std::error_code error;
    const auto output = std::filesystem::read_symlink("/proc/self/fd/1", error);
    std::fprintf(stderr, "%s\n", error ? "closed" : output.c_str());
    return argumentCount > 1 && AskAndOpen() ? 1 : 0;
}
