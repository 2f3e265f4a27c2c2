// Any text as a resource's name and type: strings keep their letters, look-ups answer whole paths,
// and both fit the room that they need.
#include "Expect.h"

#include <CoreFoundation/CoreFoundation.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace {

struct Releaser {
    void operator()(const void* object) const { CFRelease(object); }
};

using String = std::unique_ptr<std::remove_pointer_t<CFStringRef>, Releaser>;
using Url = std::unique_ptr<std::remove_pointer_t<CFURLRef>, Releaser>;

constexpr std::size_t plenty = 8192;

} // namespace

static String Create(const std::string& text, CFStringEncoding encoding) {
    return String(CFStringCreateWithCString(kCFAllocatorDefault, text.c_str(), encoding));
}

// What @p write(buffer, size) writes to a buffer of @p room bytes: a whole text, or nothing.
template <typename Write>
static std::optional<std::string> WrittenTo(std::size_t room, Write write) {
    const std::vector<char> before(room, 'x');
    std::vector<char> buffer = before;
    if (!write(buffer.data(), static_cast<CFIndex>(room))) {
        EXPECT(buffer == before);
        return std::nullopt;
    }
    EXPECT(std::find(buffer.begin(), buffer.end(), '\0') != buffer.end());
    return buffer.data();
}

// The same where there is plenty of room, and where there is just enough, and too little by one.
template <typename Write>
static std::optional<std::string> Written(Write write) {
    auto text = WrittenTo(plenty, write);
    if (text) {
        EXPECT(WrittenTo(text->size() + 1, write) == text);
        EXPECT(!WrittenTo(text->size(), write));
    }
    return text;
}

static std::optional<std::string> TextOf(const String& string, CFStringEncoding encoding) {
    return Written([&](char* buffer, CFIndex size) {
        return CFStringGetCString(string.get(), buffer, size, encoding);
    });
}

static void CheckString(const String& string, const std::string& text, CFStringEncoding encoding) {
    EXPECT(TextOf(string, encoding) == text);
    for (const CFStringEncoding other : {kCFStringEncodingMacRoman, kCFStringEncodingUTF8}) {
        if (const auto converted = TextOf(string, other)) {
            EXPECT(TextOf(Create(*converted, other), encoding) == text);
        }
    }
}

static void LookUp(const String& name, const String& type) {
    const Url url(
        CFBundleCopyResourceURL(CFBundleGetMainBundle(), name.get(), type.get(), nullptr));
    if (url != nullptr) {
        const auto path = Written([&](char* buffer, CFIndex size) {
            return CFURLGetFileSystemRepresentation(url.get(), true,
                                                    reinterpret_cast<UInt8*>(buffer), size);
        });
        EXPECT(path && path->front() == '/' && std::filesystem::exists(*path));
    }
}

extern "C" int __wrap_fputs(const char* text, std::FILE* file);

// By --wrap: a line for each name that is no resource's would be most of the log.
extern "C" int __wrap_fputs(const char* /*text*/, std::FILE* /*file*/) {
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

// The first byte chooses the encoding. A zero byte ends the name and begins the type, which another
// one ends.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const CFStringEncoding encoding =
        bytes[0] % 2 == 0 ? kCFStringEncodingMacRoman : kCFStringEncodingUTF8;
    const std::string both(bytes + 1, bytes + size);
    const std::string name = both.substr(0, both.find('\0'));
    const std::string rest = both.substr(std::min(name.size() + 1, both.size()));
    const std::string type = rest.substr(0, rest.find('\0'));

    const String nameString = Create(name, encoding);
    const String typeString = Create(type, encoding);
    EXPECT(nameString != nullptr || encoding == kCFStringEncodingUTF8);
    if (nameString != nullptr) {
        CheckString(nameString, name, encoding);
    }
    LookUp(nameString, typeString);
    return 0;
}
