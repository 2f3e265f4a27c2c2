// The texts of an alert, as toolkits take them.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <string>

/// What RunStandardAlert answers for a null alert.
inline constexpr int invalidAlert = -50;

/// @p string in UTF-8; empty if it is null or longer than 1 MiB.
std::string Utf8(CFStringRef string);
