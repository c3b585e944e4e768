#include "foundation/Encoding.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "support/Thrown.h"

namespace TKL {
namespace {

// One character of each length: U+0041, U+00E9, U+20AC, U+1F600, in the bytes of the Unicode standard's
// table.
const std::string BYTES = "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
const std::wstring WIDE = {0x41, 0xE9, 0x20AC, 0x1F600};

const std::string MALFORMED[] = {"\x80",      // continuation without lead
                                 "\xC3",      // truncated
                                 "\xE2\x82",  // truncated
                                 "\xC3"
                                 "A",                 // no continuation
                                 "\xC0\x80",          // overlong
                                 "\xE0\x80\xAF",      // overlong
                                 "\xED\xA0\x80",      // surrogate
                                 "\xF4\x90\x80\x80",  // above the last code point
                                 "\xF5\x80\x80\x80",
                                 "\xFF"};

std::string logicErrorOf(const std::wstring& text) {
  try {
    WstringToANSI(text);
  } catch (const std::logic_error& error) {
    return error.what();
  }
  return "nothing thrown";
}

TEST(Encoding, utf8ToWide) {
  EXPECT_EQ(UTF8ToWstring(BYTES), WIDE);
}
TEST(Encoding, wideToUtf8) {
  EXPECT_EQ(WstringToUTF8(WIDE), BYTES);
}
TEST(Encoding, localToWide) {
  EXPECT_EQ(ANSIToWstring(BYTES, true), WIDE);
}
TEST(Encoding, wideToLocal) {
  EXPECT_EQ(WstringToANSI(WIDE, true), BYTES);
}

TEST(Encoding, empty_staysEmpty) {
  EXPECT_TRUE(UTF8ToWstring("").empty());
  EXPECT_TRUE(ANSIToWstring("").empty());
  EXPECT_TRUE(WstringToUTF8(L"").empty());
  EXPECT_TRUE(WstringToANSI(L"").empty());
}

TEST(Encoding, malformedUtf8_fails) {
  for (const std::string& text : MALFORMED) {
    EXPECT_EQ(thrownBy([&] { UTF8ToWstring("a" + text); }),
              (Thrown{"Cannot create wide string from UTF8 string.", "[TKL::UTF8ToWstring]"}));
  }
}

TEST(Encoding, malformedLocalText_fails) {
  for (const std::string& text : MALFORMED) {
    EXPECT_EQ(
        thrownBy([&] { ANSIToWstring(text); }),
        (Thrown{"Cannot create wide string from Ansi (local encoding) string.", "[TKL::ANSIToWstring]"}));
  }
}

TEST(Encoding, wideThatIsNoCharacter_hasNoUtf8) {
  const Thrown expected{"Cannot create UTF8 string from wide string.", "[TKL::WstringToUTF8]"};
  EXPECT_EQ(thrownBy([] { WstringToUTF8(std::wstring(1, wchar_t{0x110000})); }), expected);
  EXPECT_EQ(thrownBy([] { WstringToUTF8(std::wstring(1, wchar_t{0xD800})); }), expected);
}

TEST(Encoding, wideAboveTheLastCodePoint_hasNoLocalLength) {
  EXPECT_EQ(logicErrorOf(std::wstring(1, wchar_t{0x110000})), "Cannot create wide string from UTF8 string.");
}

TEST(Encoding, wideSurrogate_hasNoLocalForm) {
  EXPECT_EQ(logicErrorOf(std::wstring(1, wchar_t{0xDFFF})), "Cannot create  UTF8 string from wide string.");
}

TEST(Encoding, limitsOfEachLength_comeBackUnchanged) {
  for (const wchar_t code : {0x7F, 0x80, 0x7FF, 0x800, 0xD7FF, 0xE000, 0xFFFF, 0x10000, 0x10FFFF}) {
    const std::wstring text(1, code);
    EXPECT_EQ(UTF8ToWstring(WstringToUTF8(text)), text);
  }
}

}  // namespace
}  // namespace TKL
