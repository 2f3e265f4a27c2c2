// Mac Roman, the encoding of a program's own texts and names.
#include "MacRoman.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

// The characters of the bytes from 0x80 on, by the Unicode Consortium's mapping table (ROMAN.TXT).
static constexpr std::array<char16_t, 128> upperHalf = {
    0x00C4, 0x00C5, 0x00C7, 0x00C9, 0x00D1, 0x00D6, 0x00DC, 0x00E1, 0x00E0, 0x00E2, 0x00E4, 0x00E3,
    0x00E5, 0x00E7, 0x00E9, 0x00E8, 0x00EA, 0x00EB, 0x00ED, 0x00EC, 0x00EE, 0x00EF, 0x00F1, 0x00F3,
    0x00F2, 0x00F4, 0x00F6, 0x00F5, 0x00FA, 0x00F9, 0x00FB, 0x00FC, 0x2020, 0x00B0, 0x00A2, 0x00A3,
    0x00A7, 0x2022, 0x00B6, 0x00DF, 0x00AE, 0x00A9, 0x2122, 0x00B4, 0x00A8, 0x2260, 0x00C6, 0x00D8,
    0x221E, 0x00B1, 0x2264, 0x2265, 0x00A5, 0x00B5, 0x2202, 0x2211, 0x220F, 0x03C0, 0x222B, 0x00AA,
    0x00BA, 0x03A9, 0x00E6, 0x00F8, 0x00BF, 0x00A1, 0x00AC, 0x221A, 0x0192, 0x2248, 0x2206, 0x00AB,
    0x00BB, 0x2026, 0x00A0, 0x00C0, 0x00C3, 0x00D5, 0x0152, 0x0153, 0x2013, 0x2014, 0x201C, 0x201D,
    0x2018, 0x2019, 0x00F7, 0x25CA, 0x00FF, 0x0178, 0x2044, 0x20AC, 0x2039, 0x203A, 0xFB01, 0xFB02,
    0x2021, 0x00B7, 0x201A, 0x201E, 0x2030, 0x00C2, 0x00CA, 0x00C1, 0x00CB, 0x00C8, 0x00CD, 0x00CE,
    0x00CF, 0x00CC, 0x00D3, 0x00D4, 0xF8FF, 0x00D2, 0x00DA, 0x00DB, 0x00D9, 0x0131, 0x02C6, 0x02DC,
    0x00AF, 0x02D8, 0x02D9, 0x02DA, 0x00B8, 0x02DD, 0x02DB, 0x02C7,
};

static void Append(std::string& utf8, char16_t character) {
    const auto put = [&utf8](unsigned int byte) { utf8 += static_cast<char>(byte); };
    if (character < 0x80U) {
        put(character);
    } else if (character < 0x800U) {
        put(0xC0U | character >> 6U);
        put(0x80U | (character & 0x3FU));
    } else {
        put(0xE0U | character >> 12U);
        put(0x80U | (character >> 6U & 0x3FU));
        put(0x80U | (character & 0x3FU));
    }
}

std::string Utf8OfMacRoman(std::string_view bytes) {
    std::string utf8;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        Append(utf8, value < 0x80U ? char16_t{value} : upperHalf[value - 0x80U]);
    }
    return utf8;
}

// Removes the first character from @p utf8 and returns it; none if it is not valid UTF-8.
static std::optional<char32_t> TakeCharacter(std::string_view& utf8) {
    struct Form {
        unsigned int mask;
        unsigned int lead;
        char32_t least; // any less would fit a shorter form
    };
    static constexpr std::array<Form, 4> forms = {
        {{0x80, 0x00, 0x0}, {0xE0, 0xC0, 0x80}, {0xF0, 0xE0, 0x800}, {0xF8, 0xF0, 0x10000}}};
    const auto byteAt = [&utf8](std::size_t i) {
        return static_cast<unsigned int>(static_cast<unsigned char>(utf8[i]));
    };
    for (std::size_t length = 1; length <= forms.size(); ++length) {
        const Form& form = forms[length - 1];
        if ((byteAt(0) & form.mask) != form.lead) {
            continue;
        }
        if (utf8.size() < length) {
            return std::nullopt;
        }
        char32_t character = byteAt(0) & ~form.mask;
        for (std::size_t i = 1; i < length; ++i) {
            if ((byteAt(i) & 0xC0U) != 0x80U) {
                return std::nullopt;
            }
            character = character << 6U | (byteAt(i) & 0x3FU);
        }
        const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
        if (character < form.least || character > 0x10FFFF || surrogate) {
            return std::nullopt;
        }
        utf8.remove_prefix(length);
        return character;
    }
    return std::nullopt;
}

std::optional<std::string> MacRomanOfUtf8(std::string_view utf8) {
    std::string bytes;
    while (!utf8.empty()) {
        const auto character = TakeCharacter(utf8);
        if (!character) {
            return std::nullopt;
        }
        if (*character < 0x80) {
            bytes += static_cast<char>(*character);
            continue;
        }
        const auto* const found = std::find(upperHalf.begin(), upperHalf.end(), *character);
        if (found == upperHalf.end()) {
            return std::nullopt;
        }
        bytes += static_cast<char>(0x80 + (found - upperHalf.begin()));
    }
    return bytes;
}

bool IsUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        if (!TakeCharacter(bytes)) {
            return false;
        }
    }
    return true;
}
