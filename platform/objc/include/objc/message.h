// The message interface of the Objective-C runtime, as far as an autorelease pool needs it.
#pragma once

using id = struct objc_object*;
using Class = struct objc_class*;
using SEL = const struct objc_selector*;

extern "C" {

/// The class named @p name, or null. Only "NSAutoreleasePool" exists.
Class objc_getClass(const char* name);

/// The selector for @p name; equal names give the same selector.
SEL sel_registerName(const char* name);

/// Sends a message. "alloc" to the class returns a pool, "init" to a pool returns that pool,
/// "release" frees it and returns null. A message to null, or an unknown one, returns null.
id objc_msgSend(id receiver, SEL selector, ...);
}
