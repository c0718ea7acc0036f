#include <gtest/gtest.h>

#include <string>

#include "base/text/ansi.h"
#include "base/text/wide.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::Utf8;

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

TEST(WideTest, ComparesWithoutCaseInAsciiOnly) {
  const struct {
    const wchar_t* a;
    const wchar_t* b;
    int want;
  } kCases[] = {
      {L"Rock", L"rOCK", 0},  {L"a", L"b", -1},     {L"ab", L"a", 1}, {L"_", L"a", -1},
      {L"\xC4", L"\xE4", -1}, {L"z", L"\x3B1", -1}, {L"", L"", 0},    {L"[", L"{", -1},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(CompareNoCase(c.a, c.b), c.want) << Utf8(c.a);
    EXPECT_EQ(CompareNoCase(c.b, c.a), -c.want) << Utf8(c.a);
  }
  EXPECT_EQ(CompareNoCase(L"TITLE=x", L"title=y", 6), 0);
  EXPECT_EQ(CompareNoCase("\xE4", "a"), 1) << "bytes compare as unsigned";
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
