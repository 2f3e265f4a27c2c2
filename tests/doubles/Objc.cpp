// The Objective-C runtime, recorded: a class, the pool it allocates, and messages to them.
#include "Effects.h"

#include <objc/message.h>

#include <string>

struct objc_object {
    std::string description;
};

struct objc_selector {
    std::string name;
};

namespace {

objc_object poolClass{"NSAutoreleasePool"};
objc_object allocatedPool{"allocated pool"};
objc_object pool{"pool"};

} // namespace

Class objc_getClass(const char* name) {
    doubles::Record("objc_getClass", name);
    return std::string(name) == poolClass.description ? reinterpret_cast<Class>(&poolClass)
                                                      : nullptr;
}

SEL sel_registerName(const char* name) {
    static const objc_selector selectors[] = {{"alloc"}, {"init"}, {"release"}};
    for (const objc_selector& selector : selectors) {
        if (selector.name == name) {
            return &selector;
        }
    }
    return nullptr;
}

id objc_msgSend(id receiver, SEL selector, ...) {
    using namespace doubles;
    Record("objc_msgSend", Word{receiver == nullptr ? "null" : receiver->description},
           Word{selector == nullptr ? "null" : selector->name});
    if (receiver == &poolClass && selector != nullptr && selector->name == "alloc") {
        return &allocatedPool;
    }
    if (receiver == &allocatedPool && selector != nullptr && selector->name == "init") {
        return &pool; // an object may initialise itself as another one
    }
    return nullptr;
}
