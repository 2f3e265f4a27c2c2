// bundle-path NAME TYPE [SUBDIRECTORY]: where the bundle of this program has that resource, all in
// Mac Roman.
// Prints the path, or "no URL", or "no path" when the URL has none of up to 1023 bytes.
#include <CoreFoundation/CoreFoundation.h>

#include <array>
#include <cstdio>

int main(int argumentCount, char** arguments) {
    if (argumentCount < 3) {
        return 2;
    }
    const auto string = [](const char* text) {
        return CFStringCreateWithCString(kCFAllocatorDefault, text, kCFStringEncodingMacRoman);
    };
    const auto* name = string(arguments[1]);
    const auto* type = string(arguments[2]);
    const auto* subdirectory = string(arguments[3]);
    const auto* url = CFBundleCopyResourceURL(CFBundleGetMainBundle(), name, type, subdirectory);
    CFRelease(name);
    CFRelease(type);
    if (subdirectory != nullptr) {
        CFRelease(subdirectory);
    }
    if (url == nullptr) {
        std::fputs("no URL", stdout);
        return 0;
    }
    std::array<UInt8, 1024> path{};
    const bool represented =
        CFURLGetFileSystemRepresentation(url, true, path.data(), path.size()) != 0;
    CFRelease(url);
    std::fputs(represented ? reinterpret_cast<const char*>(path.data()) : "no path", stdout);
    return 0;
}
