// The message interface of the Objective-C runtime, as far as an autorelease pool needs it.
#pragma once

using id = struct objc_object*;
using Class = struct objc_class*;
using SEL = const struct objc_selector*;

extern "C" {

/// The class named @p name, or null. "NSAutoreleasePool" is the only one there is.
Class objc_getClass(const char* name);

/// The selector for @p name; equal names give the same selector.
SEL sel_registerName(const char* name);

/// Sends a message. "alloc" to the class gives a pool, "init" to a pool gives that pool,
/// "release" ends it and gives null. A message to null, or one not understood, gives null.
id objc_msgSend(id receiver, SEL selector, ...);
}
