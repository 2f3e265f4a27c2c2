// Doubles of Core Foundation's strings, and of a bundle with scripted resources.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <cstddef>
#include <map>
#include <string>

namespace doubles {

struct BundleScript {
    /// The resources: path by file name.
    std::map<std::string, std::string> paths = {
        {"credits.png", "/resources/credits.png"}, {"music.mp3", "/resources/music.mp3"},
        {"skovr.png", "/resources/skovr.png"},     {"synchtune.mp3", "/resources/synchtune.mp3"},
        {"texture.png", "/resources/texture.png"},
    };
};

extern BundleScript bundle;

/// @p object as recorded in a call: a string in quotes, the path of a URL in quotes, "null", or
/// "released" for anything that is not, or no longer, an object.
std::string Describe(CFTypeRef object);

/// The calls by which the engine finds the resource @p name of @p type in /resources, as
/// doubles::EffectsOf gives them.
std::string LookupLines(const std::string& name, const std::string& type);

/// The number of strings and URLs that were made and not released.
std::size_t UnreleasedObjects();

void ForgetCoreFoundationObjects();

} // namespace doubles
