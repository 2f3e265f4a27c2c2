// Mac Roman, the encoding of a program's own texts and names.
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Every byte is a character: @p bytes as UTF-8.
std::string Utf8OfMacRoman(std::string_view bytes);

/// None if @p utf8 is not valid UTF-8, or has a character that Mac Roman lacks.
std::optional<std::string> MacRomanOfUtf8(std::string_view utf8);

/// Well-formed: shortest forms, no surrogates, nothing above U+10FFFF.
bool IsUtf8(std::string_view bytes);
