// bundle-path NAME TYPE: where the bundle of this program has that resource, both in Mac Roman.
// Prints the path, or "no URL", or "no path" when the URL has none of up to 1023 bytes.
#include <CoreFoundation/CoreFoundation.h>

#include <array>
#include <cstdio>

int main(int argumentCount, char** arguments) {
    if (argumentCount != 3) {
        return 2;
    }
    const auto* name =
        CFStringCreateWithCString(kCFAllocatorDefault, arguments[1], kCFStringEncodingMacRoman);
    const auto* type =
        CFStringCreateWithCString(kCFAllocatorDefault, arguments[2], kCFStringEncodingMacRoman);
    const auto* url = CFBundleCopyResourceURL(CFBundleGetMainBundle(), name, type, nullptr);
    CFRelease(name);
    CFRelease(type);
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
