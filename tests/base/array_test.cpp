#include "base/memory/array.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "base/memory/heap_text.h"
#include "tests/support/faults.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::HeapFaults;
using test::Utf8;
using test::Wide;

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

// Each operation on an array, and the same on the standard library's.
TEST(ArrayTest, LivesAsAModelDoes) {
  std::minstd_rand random(1);
  for (int round = 0; round < 40; ++round) {
    Array<int> array, spare;
    std::vector<int> model, others;
    for (int step = 0; step < 60; ++step) {
      const int value = static_cast<int>(random() % 1000);
      const size_t at = model.empty() ? 0 : random() % model.size();
      switch (random() % 7) {
        case 0:
          ASSERT_TRUE(array.Append(value));
          model.push_back(value);
          break;
        case 1:
          ASSERT_TRUE(array.Insert(at, value));
          model.insert(model.begin() + static_cast<ptrdiff_t>(at), value);
          break;
        case 2:
          if (model.empty()) break;
          array.RemoveAt(at);
          model.erase(model.begin() + static_cast<ptrdiff_t>(at));
          break;
        case 3:
          ASSERT_TRUE(array.Resize(at + random() % 4));
          model.resize(array.size());
          break;
        case 4:
          others.assign(random() % 30, value);
          ASSERT_TRUE(array.AppendRange(others.data(), others.size()));
          model.insert(model.end(), others.begin(), others.end());
          break;
        case 5:
          ASSERT_TRUE(array.Reserve(model.size() + at));
          EXPECT_GE(array.capacity(), model.size() + at);
          break;
        default:
          spare = std::move(array);
          array.Swap(spare);
      }
      ASSERT_EQ(std::vector<int>(array.begin(), array.end()), model);
      ASSERT_TRUE(model.empty() || array.back() == model.back());
    }
  }
}

TEST(ArrayTest, GrowsByHalf) {
  Array<int> one_by_one, in_ranges;
  std::string capacities;
  for (int i = 0; i < 28; ++i) {
    ASSERT_TRUE(one_by_one.Append(i));
    ASSERT_TRUE(in_ranges.AppendRange(&i, 1));
    if (i % 9 == 8) {
      capacities +=
          std::to_string(one_by_one.capacity()) + " " + std::to_string(in_ranges.capacity()) + ", ";
    }
  }
  EXPECT_EQ(capacities, "12 9, 18 19, 27 28, ");
  const int more[] = {1, 2};
  EXPECT_FALSE(in_ranges.AppendRange(more, static_cast<size_t>(-1))) << "more than can be counted";
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
  for (const size_t length : {static_cast<size_t>(-1) / sizeof(wchar_t), static_cast<size_t>(-1)}) {
    EXPECT_FALSE(text.Reserve(length));
    EXPECT_FALSE(text.Assign(L"", length));
  }
}

TEST(HeapTextTest, ReservesRoomToWriteOver) {
  for (const bool has_text : {false, true}) {
    HeapText text;
    ASSERT_TRUE(!has_text || text.Assign(L"abc"));
    for (const size_t length : {2, 3, 4, 40}) {
      ASSERT_TRUE(text.Reserve(length));
      EXPECT_EQ(Utf8(text.c_str()).substr(0, 2), has_text ? "ab" : "") << length;
      if (!has_text) continue;
      const std::string written = ("ab" + std::string(length, 'x')).substr(0, length);
      text.Overwrite(Wide(written), length);
      EXPECT_EQ(Utf8(text.c_str()), written);
    }
  }
}

}  // namespace
}  // namespace kelvo
