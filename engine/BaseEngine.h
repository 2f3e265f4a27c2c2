// The base of the engine's services: finds the application's resource files.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <string>

namespace engine {

class BaseEngine {
public:
    BaseEngine();

    /// The absolute path of resource file @p name with extension @p type (no dot), both Mac Roman.
    /// Empty, after a warning on standard output, when there is none or its path is longer than
    /// 1023 bytes.
    std::string GetFileFromBundle(const std::string& name, const std::string& type);

    CFBundleRef bundle; ///< the main bundle; not owned
};

} // namespace engine
