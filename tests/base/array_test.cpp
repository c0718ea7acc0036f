#include "base/memory/array.h"

#include <gtest/gtest.h>

#include "base/memory/heap_text.h"
#include "tests/support/faults.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::HeapFaults;
using test::Utf8;

std::string Joined(const Array<HeapText>& texts) {
  std::string all;
  for (const HeapText& text : texts) all += Utf8(text.c_str()) + " ";
  return all;
}

HeapText Text(const wchar_t* text) {
  HeapText copy;
  EXPECT_TRUE(copy.Assign(text));
  return copy;
}

TEST(ArrayTest, KeepsOrderThroughInsertAndRemove) {
  Array<HeapText> texts;
  for (const wchar_t* name : {L"a", L"b", L"c", L"d", L"e", L"f", L"g", L"h", L"i"}) {
    ASSERT_TRUE(texts.Append(Text(name)));
  }
  ASSERT_TRUE(texts.Insert(0, Text(L"first")));
  ASSERT_TRUE(texts.Insert(5, Text(L"mid")));
  texts.RemoveAt(2);
  texts.RemoveAt(texts.size() - 1);
  EXPECT_EQ(Joined(texts), "first a c d mid e f g h ");
}

TEST(ArrayTest, LeavesItselfAloneWhenMemoryIsOut) {
  Array<HeapText> texts;
  for (int i = 0; i < 8; ++i) ASSERT_TRUE(texts.Append(Text(L"x")));
  HeapText ninth = Text(L"y");
  {
    HeapFaults faults(0);
    EXPECT_FALSE(texts.Append(std::move(ninth)));
    EXPECT_TRUE(faults.triggered());
  }
  EXPECT_EQ(Joined(texts), "x x x x x x x x ");
  EXPECT_FALSE(texts.Reserve(static_cast<size_t>(-1) / 2));
  EXPECT_TRUE(texts.Append(Text(L"z")));
  EXPECT_EQ(texts.size(), 9u);
}

TEST(HeapTextTest, KeepsTheOldTextWhenMemoryIsOut) {
  HeapText text = Text(L"old");
  {
    HeapFaults faults(0);
    EXPECT_FALSE(text.Assign(L"new"));
  }
  EXPECT_EQ(Utf8(text.c_str()), "old");
  ASSERT_TRUE(text.Assign(L"newer", 3));
  EXPECT_EQ(Utf8(text.c_str()), "new");
}

}  // namespace
}  // namespace kelvo
