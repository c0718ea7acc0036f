#include <gtest/gtest.h>
#include <string.h>

#include <algorithm>
#include <string>

#include "base/text/ansi.h"
#include "base/text/format.h"
#include "base/text/wide.h"
#include "tests/support/code_page.h"
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
      {"Rock", "rOCK", 0, true},  {"", "", 0, true},
      {"a", "b", -1, false},      {"ab", "a", 1, false},
      {"_", "a", -1, false},      {"_", "A", -1, false},
      {"[", "{", -1, false},      {"Жук", "жУК", 0, false},
      {"Été", "éTÉ", 0, false},   {"ÜBER", "über", 0, false},
      {"Łódź", "łÓDŹ", 0, false}, {"Ωμ", "ωΜ", 0, false},
      {"z", "é", -1, false},      {"Жук", "Жуки", -1, false},
      {"表", "裏", -1, false},    {"\U0001F600", "\U0001F601", -1, false},
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

struct CodePageCase {
  unsigned code_page;
  const char* text;
  std::string bytes;
};

const CodePageCase kCodePages[] = {
    {1252, "A\u20AC\u00E9z", "A\x80\xE9z"},
    {kUtf8CodePage, "A\u00E9\u8868\U0001F600z", "A\u00E9\u8868\U0001F600z"},
#ifdef _WIN32
    {932, "A\u30BD\u8868\uFF71z", "A\x83\x5C\x95\x5C\xB1z"},
#endif
};

TEST(AnsiTest, ConvertsWithEveryCodePage) {
  for (const CodePageCase& c : kCodePages) {
    SCOPED_TRACE(c.code_page);
    const test::CodePage code_page(c.code_page);
    const Wide wide(c.text);
    const size_t units = WideLength(wide);
    bool lossy = false;
    // Whatever fits are whole characters, in both directions.
    for (size_t capacity = 0; capacity <= c.bytes.size() + 1; ++capacity) {
      std::string bytes(capacity, '#');
      const size_t length = WideToAnsi(wide, 99, bytes.data(), capacity, &lossy);
      ASSERT_LE(length, capacity);
      EXPECT_LE(std::min(capacity, c.bytes.size()) - length, 3u);
      EXPECT_EQ(bytes.substr(0, length), c.bytes.substr(0, length));
      wchar_t back[16];
      const size_t count = AnsiToWide(bytes.data(), length, back, 16);
      EXPECT_TRUE(count <= units && memcmp(back, wide.c_str(), count * sizeof(wchar_t)) == 0)
          << count;
      EXPECT_EQ(count == units, length == c.bytes.size());
      EXPECT_EQ(AnsiFolderLength(bytes.data(), length), 0u) << "no backslash among them";
    }
    for (size_t capacity = 1; capacity <= units + 1; ++capacity) {
      wchar_t text[16];
      const size_t count = AnsiToWide(c.bytes.c_str(), 99, text, capacity);
      EXPECT_TRUE(count < capacity && memcmp(text, wide.c_str(), count * sizeof(wchar_t)) == 0);
      EXPECT_EQ(text[count], 0);
      EXPECT_LE(capacity - 1 - count, 1u) << "but for half a pair";
    }
    EXPECT_FALSE(lossy);
    const std::string path = c.bytes + "\\" + c.bytes;
    EXPECT_EQ(AnsiFolderLength(path.data(), path.size()), c.bytes.size() + 1);
    // What no code page has, the first three characters of the text given.
    char bytes[16];
    const size_t length = WideToAnsi(L"a\xD83D.b", 3, bytes, sizeof(bytes), &lossy);
    EXPECT_EQ(std::string(bytes, length), "a?.");
    EXPECT_TRUE(lossy);
  }
}

TEST(AnsiTest, ReplacesWhatTheCodePageLacksAndWhatIsBroken) {
  char bytes[8];
  wchar_t wide[8];
  {
    const test::CodePage code_page(1252);
    bool lossy = false;
    const size_t length = WideToAnsi(L"\x4E2D\xD83D\xDE00.", 99, bytes, sizeof(bytes), &lossy);
    EXPECT_EQ(bytes[length - 1], '.');
    EXPECT_EQ(bytes[0], '?');
    EXPECT_TRUE(lossy);
    EXPECT_EQ(AnsiToWide("ab\0cd", 5, wide, 8), 2u);
  }
  const test::CodePage code_page(kUtf8CodePage);
  for (const char* broken :
       {"\xC3z", "\xE8\xA1z", "\x80z", "\xFFz", "\xC0\x80z", "\xED\xA0\x80z"}) {
    const size_t count = AnsiToWide(broken, 99, wide, 8);
    ASSERT_GE(count, 2u) << broken;
    EXPECT_EQ(wide[0], 0xFFFD) << broken;
    EXPECT_EQ(wide[count - 1], L'z') << broken;
  }
  EXPECT_EQ(AnsiToWide("\xC3\xA9", 1, wide, 8), 1u) << "cut off by the length";
  EXPECT_EQ(wide[0], 0xFFFD);
}

TEST(AnsiTest, FindsFoldersBetweenCharacters) {
  const test::CodePage code_page(932);
  const struct {
    std::string path;
    size_t want;
  } kCases[] = {
      {"", 0},
      {"a", 0},
      {"\\", 1},
      {"\\a\\b", 3},
      {"\\a\\", 3},
      {"\x83\x5C.mp3", 0},  // the backslash is half of a character
      {"\x95\x5C\\a", 3},   // and here a backslash follows it
      {"\xB1\\a", 2},       // a character of one byte
      {"\\\x95", 1},        // cut off behind the lead byte
      {"\\\xE0\x5C\xFC\x5C", 1},
      {"\xA0\\a", 2},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(AnsiFolderLength(c.path.data(), c.path.size()), c.want) << c.path;
  }
}

TEST(Format, PutsNumbersAndTextsWhereTheFormatAsksForThem) {
  const struct {
    const char* format;
    std::initializer_list<FormatArgument> arguments;
    const char* want;
  } kCases[] = {
      {"", {}, ""},
      {"100 %%", {}, "100 %"},
      {"version %d.%d", {2, 51}, "version 2.51"},
      {"%i-%u", {-7, 7}, "-7-7"},
      {"%u", {-1}, "4294967295"},
      {"%d|%d", {INT32_MIN, INT32_MAX}, "-2147483648|2147483647"},
      {"%02d:%09d", {5, -5}, "05:-00000005"},
      {"[%5d][%5d][%1d]", {42, -42, 123}, "[   42][  -42][123]"},
      {"[%12u][%012i]", {1, -1}, "[           1][-00000000001]"},
      {"\"%s\" %s", {L"a b", L""}, "\"a b\" "},
      {"[%5s][%2s]", {L"abc", L"abc"}, "[  abc][abc]"},
      {"only %d", {1, 2}, "only 1"},
      {"none", {1}, "none"},
  };
  for (const auto& c : kCases) {
    wchar_t text[64];
    EXPECT_TRUE(FormatWide(text, 64, Wide(c.format), c.arguments)) << c.format;
    EXPECT_EQ(Utf8(text), c.want) << c.format;
  }
}

TEST(Format, RefusesWhatTheArgumentsDoNotAnswer) {
  const struct {
    const char* format;
    std::initializer_list<FormatArgument> arguments;
  } kCases[] = {
      {"%d", {}},    {"%d %d", {1}},   {"%s", {1}},     {"%d", {L"a"}},    {"%n", {1}},
      {"%x", {1}},   {"%ld", {1}},     {"%hs", {L"a"}}, {"%*d", {1}},      {"%.2d", {1}},
      {"%-5d", {1}}, {"%+d", {1}},     {"%100d", {1}},  {"%05s", {L"a"}},  {"%", {1}},
      {"%5", {1}},   {"%0", {1}},      {"%", {}},       {"half %d%", {1}}, {"%c", {1}},
      {"%5%", {}},   {"%d%n", {1, 2}},
  };
  for (const auto& c : kCases) {
    wchar_t text[64] = L"old";
    EXPECT_FALSE(FormatWide(text, 64, Wide(c.format), c.arguments)) << c.format;
    EXPECT_EQ(Utf8(text), "") << c.format;
  }
}

TEST(Format, CutsWhatDoesNotFit) {
  const FormatArgument kArguments[] = {FormatArgument(-123), FormatArgument(L"text")};
  const std::string whole = "a  -123 text%";
  for (size_t capacity = 1; capacity <= whole.size() + 1; ++capacity) {
    wchar_t text[20];
    for (wchar_t& unit : text) unit = L'#';
    EXPECT_TRUE(FormatWide(text, capacity, Wide("a%6d %s%%"), {kArguments[0], kArguments[1]}));
    EXPECT_EQ(Utf8(text), whole.substr(0, capacity - 1));
    EXPECT_EQ(text[capacity], L'#') << "nothing beyond the end";
  }
}

}  // namespace
}  // namespace kelvo
