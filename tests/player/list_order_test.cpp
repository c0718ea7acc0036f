#include "host/player/list_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace velmora {
namespace {

TEST(ListOrder, NamesAreSortedAsPeopleDo) {
  const struct {
    const char16_t *smaller, *greater;
  } cases[] = {
      {u"", u"a"},
      {u"a", u"b"},
      {u"a", u"ab"},
      {u"track_2", u"track_10"},
      {u"2 b", u"10 a"},
      {u"9", u"a"},
      {u"1", u"1 a"},
      {u"7", u"007"},      // the same number: the shorter text
      {u"007 a", u"7 b"},  // what follows decides first
      {u"a07b1", u"a7b2"},
      {u"0", u"1"},
      {u"x99999999999999999998", u"x99999999999999999999"},  // no number of a machine
      {u"x99999999999999999999", u"x100000000000000000000"},
      {u"c:\\a\\z", u"c:\\a b\\a"},  // a folder before one that begins like it
      {u"a\\b", u"ab"},
  };
  for (const auto& c : cases) {
    const std::string name = std::string(c.greater, c.greater + std::u16string(c.greater).size());
    EXPECT_LT(CompareNaturally(c.smaller, c.greater), 0) << name;
    EXPECT_GT(CompareNaturally(c.greater, c.smaller), 0) << name;
    EXPECT_EQ(CompareNaturally(c.greater, c.greater), 0) << name;
  }
  EXPECT_EQ(SortedOrder({u"b10", u"a", u"b9", u"a", u"b09"}), (ListOrder{1, 3, 2, 4, 0}));
}

TEST(ListOrder, ReversedAndShuffled) {
  EXPECT_EQ(ReversedOrder(3), (ListOrder{2, 1, 0}));
  const ListOrder first = ShuffledOrder(20, 1);
  EXPECT_NE(first, ShuffledOrder(20, 2));
  ListOrder sorted = first, all(20);
  std::sort(sorted.begin(), sorted.end());
  std::iota(all.begin(), all.end(), size_t{0});
  EXPECT_NE(first, all);
  EXPECT_EQ(sorted, all) << "each once";
}

TEST(ListOrder, WordsAreFoundInAnyOrder) {
  const Texts texts = {u"red moon", u"blue moon", u"sun", u""};
  const struct {
    const char16_t* wanted;
    std::vector<size_t> found;
  } cases[] = {
      {u"", {0, 1, 2, 3}}, {u"  ", {0, 1, 2, 3}}, {u"moon", {0, 1}},      {u"oo  bl ", {1}},
      {u"un", {2}},        {u"red sun", {}},      {u"moon moon", {0, 1}}, {u" moonx", {}},
  };
  for (const auto& c : cases) EXPECT_EQ(FindWords(texts, c.wanted), c.found) << c.wanted[0];
}

}  // namespace
}  // namespace velmora
