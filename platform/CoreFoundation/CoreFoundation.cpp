// Strings, and a bundle that is a folder of files.
#include <CoreFoundation/CoreFoundation.h>

#include "MacRoman.h"
#include "ResourceFolders.h"

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

#include <unistd.h>

namespace {

/// Both a string (in UTF-8) and a URL (an absolute path).
struct Text {
    std::string bytes;
};

template <typename Reference>
Reference Handle(std::string bytes) {
    // Owned by the caller, who frees it with CFRelease.
    return reinterpret_cast<Reference>(new Text{std::move(bytes)});
}

const std::string& Bytes(const void* object) {
    return static_cast<const Text*>(object)->bytes;
}

std::optional<std::string> Decoded(const char* text, CFStringEncoding encoding) {
    if (encoding == kCFStringEncodingMacRoman) {
        return Utf8OfMacRoman(text);
    }
    if (encoding == kCFStringEncodingUTF8 && IsUtf8(text)) {
        return text;
    }
    return std::nullopt;
}

std::optional<std::string> Encoded(const std::string& bytes, CFStringEncoding encoding) {
    switch (encoding) {
    case kCFStringEncodingMacRoman:
        return MacRomanOfUtf8(bytes);
    case kCFStringEncodingUTF8:
        return bytes;
    default:
        return std::nullopt;
    }
}

/// Copies all of it, zero-terminated, or nothing.
bool Copied(const std::string& bytes, char* buffer, CFIndex bufferSize) {
    if (buffer == nullptr || bufferSize <= 0 ||
        bytes.size() >= static_cast<std::size_t>(bufferSize)) {
        return false;
    }
    std::memcpy(buffer, bytes.c_str(), bytes.size() + 1);
    return true;
}

} // namespace

/// Resources are in the first folder that exists; later ones are not searched.
struct CFBundleObject {
    CFBundleObject() {
        std::error_code error;
        for (const auto& candidate : ResourceFolders(error)) {
            searched += (searched.empty() ? "" : ", ") + candidate.string();
            const auto status = std::filesystem::status(candidate, error);
            if (std::filesystem::is_directory(status)) {
                folder = candidate;
                return;
            }
            if (!std::filesystem::status_known(status)) {
                searched += " (" + error.message() + ")";
            }
        }
        if (searched.empty()) {
            searched = "no folder: the program's own is unknown (" + error.message() + ")";
        }
    }

    std::filesystem::path folder; ///< empty: there is none
    std::string searched;         ///< that folder and those before it
};

namespace {

/// The reason, of which callers learn only that there is no path, or that opening fails.
void Say(const std::string& resource, const std::string& problem) {
    const std::string line = std::string(program_invocation_short_name) + ": resource " + resource +
                             " " + problem + '\n';
    std::fputs(line.c_str(), stderr);
}

} // namespace

extern "C" {

CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char* text, CFStringEncoding encoding) {
    if (text == nullptr) {
        return nullptr;
    }
    auto decoded = Decoded(text, encoding);
    return decoded ? Handle<CFStringRef>(*std::move(decoded)) : nullptr;
}

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize,
                           CFStringEncoding encoding) {
    if (string == nullptr) {
        return false;
    }
    const auto encoded = Encoded(Bytes(string), encoding);
    return encoded && Copied(*encoded, buffer, bufferSize);
}

CFBundleRef CFBundleGetMainBundle() {
    static CFBundleObject bundle;
    return &bundle;
}

CFURLRef CFBundleCopyResourceURL(CFBundleRef bundle, CFStringRef name, CFStringRef type,
                                 CFStringRef subdirectory) {
    if (bundle == nullptr || subdirectory != nullptr) {
        return nullptr;
    }
    if (name == nullptr) {
        Say("(unknown)", "not found: its name cannot be converted");
        return nullptr;
    }
    const auto file = type == nullptr ? Bytes(name) : Bytes(name) + '.' + Bytes(type);
    const auto path = bundle->folder / file;
    // Anything of that name counts, even a folder or an unreadable file: opening it reports the
    // error.
    std::error_code error;
    if (bundle->folder.empty() || !std::filesystem::exists(path, error)) {
        Say(file, error ? "cannot be reached in " + bundle->folder.string() + ": " + error.message()
                        : "not found; searched " + bundle->searched);
        return nullptr;
    }
    if (access(path.c_str(), R_OK) != 0) {
        Say(file, "cannot be read: " + std::generic_category().message(errno));
    }
    return Handle<CFURLRef>(path.string());
}

Boolean CFURLGetFileSystemRepresentation(CFURLRef url, Boolean, UInt8* buffer, CFIndex bufferSize) {
    if (url == nullptr) {
        return false;
    }
    const auto& path = Bytes(url);
    const bool copied = Copied(path, reinterpret_cast<char*>(buffer), bufferSize);
    if (!copied && buffer != nullptr && bufferSize > 0) {
        Say(path, "has a path of " + std::to_string(path.size()) + " bytes, more than the " +
                      std::to_string(bufferSize - 1) + " that are possible");
    }
    return copied;
}

void CFRelease(CFTypeRef object) {
    delete static_cast<const Text*>(object);
}
}
