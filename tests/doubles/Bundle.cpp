#include "Bundle.h"

#include "Effects.h"

#include <algorithm>
#include <memory>

struct CFStringObject {
    std::string text;
};

struct CFURLObject {
    std::string path;
};

struct CFBundleObject {};

namespace doubles {

BundleScript bundle;

namespace {

CFBundleObject mainBundle;
std::map<CFTypeRef, std::unique_ptr<CFStringObject>> strings;
std::map<CFTypeRef, std::unique_ptr<CFURLObject>> urls;

Word Encoding(CFStringEncoding encoding) {
    return {encoding == kCFStringEncodingMacRoman ? "kCFStringEncodingMacRoman"
                                                  : std::to_string(encoding)};
}

} // namespace

std::string Describe(CFTypeRef object) {
    if (object == nullptr) {
        return "null";
    }
    if (const auto string = strings.find(object); string != strings.end()) {
        return Text(string->second->text);
    }
    if (const auto url = urls.find(object); url != urls.end()) {
        return Text(url->second->path);
    }
    return "released";
}

std::string LookupLines(const std::string& name, const std::string& type) {
    const std::string path = "/resources/" + name + "." + type;
    const auto make = [](const std::string& text) {
        return "CFStringCreateWithCString(kCFAllocatorDefault, " + Text(text) +
               ", kCFStringEncodingMacRoman)";
    };
    return Lines({
        make(name),
        make(type),
        "CFBundleCopyResourceURL(main bundle, " + Text(name) + ", " + Text(type) + ", null)",
        "CFURLGetFileSystemRepresentation(" + Text(path) + ", true, 1024)",
        "CFRelease(" + Text(name) + ")",
        "CFRelease(" + Text(type) + ")",
        "CFRelease(" + Text(path) + ")",
    });
}

std::size_t UnreleasedObjects() {
    return strings.size() + urls.size();
}

void ForgetCoreFoundationObjects() {
    strings.clear();
    urls.clear();
}

} // namespace doubles

CFStringRef CFStringCreateWithCString(CFAllocatorRef allocator, const char* text,
                                      CFStringEncoding encoding) {
    using namespace doubles;
    Record("CFStringCreateWithCString",
           Word{allocator == kCFAllocatorDefault ? "kCFAllocatorDefault" : "allocator"}, text,
           Encoding(encoding));
    auto object = std::make_unique<CFStringObject>(CFStringObject{text});
    const CFStringRef string = object.get();
    strings[string] = std::move(object);
    return string;
}

CFBundleRef CFBundleGetMainBundle() {
    doubles::Record("CFBundleGetMainBundle");
    return &doubles::mainBundle;
}

CFURLRef CFBundleCopyResourceURL(CFBundleRef bundle, CFStringRef name, CFStringRef type,
                                 CFStringRef subdirectory) {
    using namespace doubles;
    Record("CFBundleCopyResourceURL", Word{bundle == &mainBundle ? "main bundle" : "bundle"},
           Word{Describe(name)}, Word{Describe(type)}, Word{Describe(subdirectory)});
    const auto resource = doubles::bundle.paths.find(name->text + "." + type->text);
    if (resource == doubles::bundle.paths.end()) {
        return nullptr;
    }
    auto object = std::make_unique<CFURLObject>(CFURLObject{resource->second});
    const CFURLRef url = object.get();
    urls[url] = std::move(object);
    return url;
}

Boolean CFURLGetFileSystemRepresentation(CFURLRef url, Boolean resolveAgainstBase, UInt8* buffer,
                                         CFIndex bufferSize) {
    using namespace doubles;
    Record("CFURLGetFileSystemRepresentation", Word{Describe(url)}, resolveAgainstBase != 0,
           static_cast<int>(bufferSize));
    std::fill_n(buffer, bufferSize, UInt8{'?'}); // what a failure leaves there is not to be used
    if (url == nullptr || url->path.size() >= static_cast<std::size_t>(bufferSize)) {
        return 0;
    }
    *std::copy(url->path.begin(), url->path.end(), buffer) = 0;
    return 1;
}

void CFRelease(CFTypeRef object) {
    using namespace doubles;
    Record("CFRelease", Word{Describe(object)});
    strings.erase(object);
    urls.erase(object);
}
