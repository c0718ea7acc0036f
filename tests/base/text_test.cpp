#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "base/text/ansi.h"
#include "base/text/wide.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::Utf8;
using test::Wide;

TEST(WideTest, ParsesLeadingDigitsOnly) {
  const struct {
    const wchar_t* text;
    int32_t want;
  } kCases[] = {
      {L"", 0},
      {L"abc", 0},
      {L"12", 12},
      {L" \t7x9", 7},
      {L"-5", -5},
      {L"+8", 8},
      {L"- 5", 0},
      {L"007/12", 7},
      {L"2147483647", INT32_MAX},
      {L"\xFF11", 0},
      {L"2147483648", INT32_MAX},
      {L"-99999999999999999999", INT32_MIN},
  };
  for (const auto& c : kCases) EXPECT_EQ(ParseDecimal(c.text), c.want) << Utf8(c.text);
}

TEST(WideTest, FormatsWhatItParses) {
  for (int32_t value : {0, 7, -1, 10, 1000000, INT32_MAX, INT32_MIN}) {
    wchar_t text[12];
    FormatDecimal(text, value);
    EXPECT_EQ(Utf8(text), std::to_string(value));
    EXPECT_EQ(ParseDecimal(text), value);
  }
}

TEST(WideTest, TextsFoldAsTheSystemDoesAndKeysInAsciiOnly) {
  const struct {
    const char *a, *b;
    int want;
    bool same_key;
  } kCases[] = {
      {"Rock", "rOCK", 0, true},
      {"", "", 0, true},
      {"a", "b", -1, false},
      {"ab", "a", 1, false},
      {"_", "a", -1, false},
      {"_", "A", -1, false},
      {"[", "{", -1, false},
      {"Жук", "жУК", 0, false},
      {"Été", "éTÉ", 0, false},
      {"ÜBER", "über", 0, false},
      {"Łódź", "łÓDŹ", 0, false},
      {"Ωμ", "ωΜ", 0, false},
      {"z", "é", -1, false},
      {"Жук", "Жуки", -1, false},
      {"表", "裏", -1, false},
      {"\U0001F600", "\U0001F601", -1, false},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.a);
    const Wide a(c.a), b(c.b);
    const size_t longer = std::max(WideLength(a), WideLength(b));
    EXPECT_EQ(CompareNoCase(a, b), c.want);
    EXPECT_EQ(CompareNoCase(b, a), -c.want);
    EXPECT_EQ(EqualNoCase(a, b), c.want == 0);
    EXPECT_EQ(EqualNoCase(a, b, longer), c.want == 0);
    EXPECT_EQ(EqualAsciiNoCase(a, b), c.same_key);
    EXPECT_EQ(EqualAsciiNoCase(c.a, c.b), c.same_key);
    EXPECT_EQ(EqualAsciiNoCase(a, b, longer), c.same_key);
  }
  EXPECT_TRUE(EqualNoCase(L"\\Été\\x", L"\\éTÉ\\y", 5));
  EXPECT_FALSE(EqualNoCase(L"\\Été\\x", L"\\éTÉ\\y", 6));
  EXPECT_TRUE(EqualAsciiNoCase("TITLE=x", "title=y", 6));
  EXPECT_FALSE(EqualAsciiNoCase("TITLE=x", "title=y", 7));
  EXPECT_LT(CompareWide(L"A", L"a"), 0);
  EXPECT_EQ(CompareWide(L"a", L"a"), 0);
  EXPECT_GT(CompareWide(L"aa", L"a"), 0);
}

TEST(WideTest, CutsWhatDoesNotFit) {
  wchar_t text[6];
  EXPECT_EQ(CopyWide(text, 6, L"123456789"), 5u);
  EXPECT_EQ(Utf8(text), "12345");
  EXPECT_EQ(CopyWide(text, 6, L"12345", 2), 2u);
  EXPECT_TRUE(AppendWide(text, 6, L"abc"));
  EXPECT_FALSE(AppendWide(text, 6, L"d"));
  EXPECT_EQ(Utf8(text), "12abc");
  EXPECT_EQ(Utf8(FileNameOf(L"\\a.b\\c.ogg")), "c.ogg");
  EXPECT_EQ(Utf8(FileNameOf(L"c.ogg")), "c.ogg");
}

TEST(AnsiTest, ConvertsWhatTheCodePageHoldsAndMarksTheRest) {
  char bytes[8];
  bool lossy = false;
  EXPECT_EQ(WideToAnsi(L"A\x20AC\xE9", 99, bytes, sizeof(bytes), &lossy), 3u);
  EXPECT_EQ(std::string(bytes, 3), "A\x80\xE9");
  EXPECT_FALSE(lossy);
  const size_t length = WideToAnsi(L"\x4E2D\xD83D\xDE00.", 99, bytes, sizeof(bytes), &lossy);
  EXPECT_EQ(bytes[length - 1], '.');
  EXPECT_TRUE(lossy);
  EXPECT_EQ(bytes[0], '?');
  EXPECT_EQ(WideToAnsi(L"123456789", 99, bytes, sizeof(bytes), nullptr), 8u);
  EXPECT_EQ(WideToAnsi(L"123456789", 4, bytes, sizeof(bytes), nullptr), 4u);
  wchar_t wide[4];
  EXPECT_EQ(AnsiToWide("\x80xyz", 99, wide, 4), 3u);
  EXPECT_EQ(Utf8(wide), "\u20ACxy");
  EXPECT_EQ(AnsiToWide("ab\0cd", 5, wide, 4), 2u);
}

}  // namespace
}  // namespace kelvo
