// Strings, the application bundle and URLs, under Core Foundation's names.
#pragma once

using CFTypeRef = const void*;
using CFAllocatorRef = const struct CFAllocatorObject*;
using CFStringRef = const struct CFStringObject*;
using CFURLRef = const struct CFURLObject*;
using CFBundleRef = struct CFBundleObject*;
using CFIndex = long;
using CFStringEncoding = unsigned int;
using Boolean = unsigned char;
using UInt8 = unsigned char;

inline constexpr CFAllocatorRef kCFAllocatorDefault = nullptr;
inline constexpr CFStringEncoding kCFStringEncodingMacRoman = 0;
inline constexpr CFStringEncoding kCFStringEncodingUTF8 = 0x08000100;

extern "C" {

/// A new string of the zero-terminated @p text; owned by the caller, see CFRelease.
/// Null when @p text is not valid in @p encoding.
CFStringRef CFStringCreateWithCString(CFAllocatorRef allocator, const char* text,
                                      CFStringEncoding encoding);

/// Writes @p string, zero-terminated, into @p buffer of @p bufferSize bytes.
/// False when it does not fit or @p encoding cannot express it.
Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize,
                           CFStringEncoding encoding);

/// The program's bundle; not owned by the caller.
CFBundleRef CFBundleGetMainBundle();

/// The URL of resource file @p name with extension @p type (no dot); owned by the caller.
/// Null, after a line on standard error that names it and the folders searched, when there is no
/// such file. Null unless @p subdirectory is null: there are no subdirectories.
CFURLRef CFBundleCopyResourceURL(CFBundleRef bundle, CFStringRef name, CFStringRef type,
                                 CFStringRef subdirectory);

/// Writes the absolute path of @p url, zero-terminated, into @p buffer of @p bufferSize bytes.
/// False when it does not fit or @p url is null.
Boolean CFURLGetFileSystemRepresentation(CFURLRef url, Boolean resolveAgainstBase, UInt8* buffer,
                                         CFIndex bufferSize);

/// Releases the result of a Create or Copy call. @p object must not be null.
void CFRelease(CFTypeRef object);
}
