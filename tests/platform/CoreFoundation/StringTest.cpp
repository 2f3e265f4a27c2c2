// Strings: from Mac Roman and UTF-8, and back.
#include <CoreFoundation/CoreFoundation.h>

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>

namespace {

/// A string given back at the end of its scope.
class String {
public:
    String(const char* text, CFStringEncoding encoding)
        : string(CFStringCreateWithCString(kCFAllocatorDefault, text, encoding)) {}
    ~String() {
        if (string != nullptr) {
            CFRelease(string);
        }
    }
    String(const String&) = delete;
    String& operator=(const String&) = delete;

    CFStringRef Get() const { return string; }

    std::optional<std::string> In(CFStringEncoding encoding) const {
        std::array<char, 256> buffer{};
        if (CFStringGetCString(string, buffer.data(), buffer.size(), encoding) == 0) {
            return std::nullopt;
        }
        return buffer.data();
    }

private:
    CFStringRef string;
};

constexpr auto macRoman = kCFStringEncodingMacRoman;
constexpr auto utf8 = kCFStringEncodingUTF8;

TEST(String, OfPlainLettersIsTheSameInBothEncodings) {
    const String string("texture", macRoman);
    EXPECT_EQ(string.In(utf8), "texture");
    EXPECT_EQ(string.In(macRoman), "texture");
}

TEST(String, MayBeEmpty) {
    const String string("", macRoman);
    ASSERT_NE(string.Get(), nullptr);
    EXPECT_EQ(string.In(utf8), "");
}

TEST(String, NorwegianLettersComeFromMacRoman) {
    // The letters ae, o with stroke and a with ring, small and capital.
    const String string("\xBE\xBF\x8C \xAE\xAF\x81", macRoman);
    EXPECT_EQ(string.In(utf8), "\u00E6\u00F8\u00E5 \u00C6\u00D8\u00C5");
}

TEST(String, EveryMacRomanByteIsALetterAndComesBack) {
    for (int byte = 1; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        const String string(text.c_str(), macRoman);
        ASSERT_NE(string.Get(), nullptr) << byte;
        EXPECT_EQ(string.In(macRoman), text) << byte;
    }
}

TEST(String, HasTheCharactersOfUnicodesMappingTable) {
    // The first, those that other tables have another character for, the last.
    EXPECT_EQ(String("\x80\xC6\xDB\xF0\xFF", macRoman).In(utf8), "\u00C4\u2206\u20AC\uF8FF\u02C7");
}

TEST(String, ComesFromUtf8) {
    const String string("kj\u00F8re", utf8);
    EXPECT_EQ(string.In(utf8), "kj\u00F8re");
    EXPECT_EQ(string.In(macRoman), "kj\xBFre");
}

TEST(String, OfWhatIsNotUtf8IsNull) {
    for (const char* text : {
             "kj\xBFre",         // a byte that goes on, and nothing before it
             "kj\xC3",           // cut short
             "\xE2\x82 ",        // the same, within a text
             "\xC0\xAF",         // longer than need be, as are the next two
             "\xE0\x9F\xBF",     //
             "\xF0\x8F\xBF\xBF", //
             "\xED\xA0\x80",     // a surrogate
             "\xF4\x90\x80\x80", // beyond the last character
             "\xFF",             // in no form
         }) {
        EXPECT_EQ(String(text, utf8).Get(), nullptr) << testing::PrintToString(text);
    }
}

TEST(String, MayHoldEveryFormOfUtf8) {
    for (const char* text :
         {"\u007F", "\u0080", "\u07FF", "\u0800", "\uD7FF", "\uE000", "\U00010000", "\U0010FFFF"}) {
        EXPECT_EQ(String(text, utf8).In(utf8), text);
    }
}

TEST(String, OfAnUnknownEncodingIsNull) {
    constexpr CFStringEncoding unknown = 77;
    EXPECT_EQ(String("a", unknown).Get(), nullptr);
    EXPECT_EQ(String("a", utf8).In(unknown), std::nullopt);
}

TEST(String, OfNoTextIsNull) {
    EXPECT_EQ(String(nullptr, macRoman).Get(), nullptr);
}

TEST(String, HasNoMacRomanFormOfLettersThatItLacks) {
    EXPECT_EQ(String("\u0416", utf8).In(macRoman), std::nullopt);
}

TEST(String, FitsABufferOfItsLengthAndTheZero) {
    const String string("abc", macRoman);
    std::array<char, 4> buffer{'x', 'x', 'x', 'x'};
    EXPECT_TRUE(CFStringGetCString(string.Get(), buffer.data(), 4, utf8));
    EXPECT_EQ(std::string(buffer.data()), "abc");
}

TEST(String, DoesNotFitAShorterBufferAndLeavesItAlone) {
    const String string("abc", macRoman);
    std::array<char, 4> buffer{'x', 'x', 'x', 'x'};
    EXPECT_FALSE(CFStringGetCString(string.Get(), buffer.data(), 3, utf8));
    EXPECT_FALSE(CFStringGetCString(string.Get(), buffer.data(), 0, utf8));
    EXPECT_FALSE(CFStringGetCString(string.Get(), buffer.data(), -1, utf8));
    EXPECT_EQ(buffer, (std::array<char, 4>{'x', 'x', 'x', 'x'}));
}

TEST(String, NeedsRoomForItsBytesAfterConversion) {
    const String string("\xBF", macRoman); // two bytes in UTF-8
    std::array<char, 3> buffer{};
    EXPECT_FALSE(CFStringGetCString(string.Get(), buffer.data(), 2, utf8));
    EXPECT_TRUE(CFStringGetCString(string.Get(), buffer.data(), 3, utf8));
}

TEST(String, ThatIsNullHasNoForm) {
    std::array<char, 4> buffer{};
    EXPECT_FALSE(CFStringGetCString(nullptr, buffer.data(), 4, utf8));
}

TEST(Url, ThatIsNullHasNoPath) {
    std::array<UInt8, 4> buffer{};
    EXPECT_FALSE(CFURLGetFileSystemRepresentation(nullptr, true, buffer.data(), 4));
}

TEST(Bundle, IsAlwaysTheSame) {
    EXPECT_NE(CFBundleGetMainBundle(), nullptr);
    EXPECT_EQ(CFBundleGetMainBundle(), CFBundleGetMainBundle());
}

} // namespace
