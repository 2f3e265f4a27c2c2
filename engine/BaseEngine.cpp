#include "BaseEngine.h"

#include <iostream>

namespace engine {

BaseEngine::BaseEngine() : bundle(CFBundleGetMainBundle()) {}

std::string BaseEngine::GetFileFromBundle(const std::string& name, const std::string& type) {
    CFStringRef nameString =
        CFStringCreateWithCString(kCFAllocatorDefault, name.c_str(), kCFStringEncodingMacRoman);
    CFStringRef typeString =
        CFStringCreateWithCString(kCFAllocatorDefault, type.c_str(), kCFStringEncodingMacRoman);
    CFURLRef url = CFBundleCopyResourceURL(bundle, nameString, typeString, nullptr);

    UInt8 path[1024];
    if (!CFURLGetFileSystemRepresentation(url, true, path, sizeof path)) {
        std::cout << "WARNING: CFURLGetFileSystemRepresentation returned FALSE\n";
        path[0] = 0;
    }

    CFRelease(nameString);
    CFRelease(typeString);
    if (url != nullptr) { // a missing resource has no URL, and null must not be released
        CFRelease(url);
    }
    return reinterpret_cast<const char*>(path);
}

} // namespace engine
