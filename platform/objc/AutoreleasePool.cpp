// An autorelease pool that holds nothing: no object of this system is ever autoreleased.
#include <objc/message.h>

#include <string>
#include <string_view>
#include <unordered_set>

struct objc_object {};
struct objc_class {};

namespace {

objc_class poolClass;

SEL Selector(const std::string& name) {
    // The set never moves its elements, so that an element's address stands for its name.
    static std::unordered_set<std::string> names;
    return reinterpret_cast<SEL>(&*names.insert(name).first);
}

} // namespace

extern "C" {

Class objc_getClass(const char* name) {
    return name != nullptr && std::string_view(name) == "NSAutoreleasePool" ? &poolClass : nullptr;
}

SEL sel_registerName(const char* name) {
    return name != nullptr ? Selector(name) : nullptr;
}

id objc_msgSend(id receiver, SEL selector, ...) {
    if (receiver == nullptr) {
        return nullptr;
    }
    if (receiver == reinterpret_cast<id>(&poolClass)) {
        // Owned by the caller, until it is sent "release".
        return selector == Selector("alloc") ? new objc_object : nullptr;
    }
    if (selector == Selector("init")) {
        return receiver;
    }
    if (selector == Selector("release")) {
        delete receiver;
    }
    return nullptr;
}
}
