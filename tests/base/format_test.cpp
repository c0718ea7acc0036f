#include "base/text/format.h"

#include <gtest/gtest.h>

#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::Utf8;
using test::Wide;

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
      {"%d", {}},        {"%d %d", {1}}, {"%d", {1, 2}}, {"none", {1}},    {"%s", {1}},
      {"%d", {L"a"}},    {"%n", {1}},    {"%x", {1}},    {"%ld", {1}},     {"%hs", {L"a"}},
      {"%*d", {1}},      {"%.2d", {1}},  {"%-5d", {1}},  {"%+d", {1}},     {"%100d", {1}},
      {"%05s", {L"a"}},  {"%", {1}},     {"%5", {1}},    {"%0", {1}},      {"%", {}},
      {"half %d%", {1}}, {"%c", {1}},    {"%5%", {}},    {"%d%n", {1, 2}},
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
