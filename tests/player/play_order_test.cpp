#include "host/player/play_order.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace velmora {
namespace {

// A step is a letter: n next, p previous, c0 to c9 choose, a append one, r0 remove, m03 move 0 to
// 3, v the other way round, x clear, S and s shuffle on and off, R and r- repeat. Returns the
// current track after each step that has one: a digit, "-" for none.
std::string Walk(PlayOrder& order, const std::string& steps) {
  std::string currents;
  const auto digit = [&](size_t at) { return static_cast<size_t>(steps[at] - '0'); };
  for (size_t i = 0; i < steps.size(); ++i) {
    switch (steps[i]) {
      case 'n':
        currents += order.Next() == kNoTrack ? "." : "";
        break;
      case 'p':
        currents += order.Previous() == kNoTrack ? "." : "";
        break;
      case 'c':
        order.SetCurrent(digit(++i));
        break;
      case 'a':
        order.Append(digit(++i));
        continue;
      case 'r':
        order.Remove(digit(++i));
        break;
      case 'm':
        order.Move(digit(i + 1), digit(i + 2));
        i += 2;
        break;
      case 'v': {
        std::vector<size_t> reversed(order.size());
        for (size_t at = 0; at < reversed.size(); ++at) reversed[at] = reversed.size() - 1 - at;
        order.Arrange(reversed);
        break;
      }
      case 'x':
        order.Clear();
        break;
      case 'R':
        order.SetRepeat(true);
        continue;
      default:
        ADD_FAILURE() << steps[i];
    }
    currents += order.current() == kNoTrack ? "-" : std::to_string(order.current());
  }
  return currents;
}

TEST(PlayOrder, InTheListsOrder) {
  const struct {
    const char* name;
    const char* steps;
    const char* want;  // "." where there was no next or previous one
  } cases[] = {
      {"empty", "npRnp", ".-.-.-.-"},
      {"to the end and back", "a3nnnnppp", "012.210.0"},
      {"repeat goes round", "a3Rnnnnpp", "012021"},
      {"one track, repeated", "a1Rnnp", "000"},
      {"chosen", "a5c3nc1p", "3410"},
      {"chosen beyond the end", "a2c1c7", "11"},
      {"appended behind the end", "a2nnna1n", "01.12"},
      {"removed before the current", "a4c2r0n", "212"},
      {"removed behind the current", "a4c1r3nn", "112.2"},
      {"the current removed: the one that followed is next", "a4c1r1n", "1-1"},
      {"the current removed: the one before is previous", "a4c2r2p", "2-1"},
      {"the last removed while current", "a3c2r2nRn", "2-.-0"},
      {"removed beyond the end", "a2c1r5", "11"},
      {"moved itself", "a4c1m13n", "13.3"},
      {"moved over it from before", "a4c2m03n", "212"},
      {"moved over it from behind", "a4c1m30nn", "123.3"},
      {"moved beyond the end", "a2c1m05", "11"},
      {"arranged", "a4c1vnn", "123.3"},
      {"arranged without a current one", "a4c1r1vn", "1--1"},
      {"cleared", "a3c1xn", "1-.-"},
      {"appended after clearing", "a3c2xa2nn", "2-01"},
  };
  for (const auto& c : cases) {
    PlayOrder order(1);
    EXPECT_EQ(Walk(order, c.steps), c.want) << c.name;
  }
}

// The tracks that Next names until there is none.
std::vector<size_t> Rest(PlayOrder& order) {
  std::vector<size_t> rest;
  for (size_t next = order.Next(); next != kNoTrack; next = order.Next()) rest.push_back(next);
  return rest;
}

TEST(PlayOrder, ShuffledEveryTrackComesOnce) {
  std::set<std::vector<size_t>> seen;
  for (uint32_t seed = 0; seed < 40; ++seed) {
    SCOPED_TRACE(seed);
    PlayOrder order(seed);
    order.Append(6);
    order.SetCurrent(4);
    order.SetShuffle(true);
    EXPECT_EQ(order.current(), 4u) << "goes on with what plays";
    order.Next();
    order.Append(3);
    const size_t picked = order.current() == 8 ? 7 : 8;
    order.SetCurrent(picked);
    order.Remove(0);
    std::vector<size_t> all = Rest(order);
    seen.insert(all);
    const std::set<size_t> distinct(all.begin(), all.end());
    EXPECT_EQ(distinct.size(), all.size()) << "one came twice";
    EXPECT_EQ(distinct.count(picked - 1), 0u) << "the picked one came again";
    EXPECT_GE(all.size(), 5u);
    EXPECT_LE(all.size(), 6u)
        << "of nine, the first, the second, the picked and perhaps the removed";
  }
  EXPECT_GT(seen.size(), 20u) << "hardly shuffled";
}

TEST(PlayOrder, ShuffledPreviousRetracesTheWay) {
  PlayOrder order(7);
  order.Append(8);
  order.SetShuffle(true);
  const std::vector<size_t> way = Rest(order);
  ASSERT_EQ(way.size(), 8u);
  for (size_t i = 7; i-- > 0;) EXPECT_EQ(order.Previous(), way[i]);
  EXPECT_EQ(order.Previous(), kNoTrack);
  order.SetShuffle(false);
  EXPECT_EQ(order.current(), way[0]);
  EXPECT_EQ(order.Next(), way[0] < 7 ? way[0] + 1 : kNoTrack);
}

TEST(PlayOrder, ShuffledRepeatNamesAllAndNoneTwiceInARow) {
  PlayOrder order(3);
  order.Append(4);
  order.SetShuffle(true);
  order.SetRepeat(true);
  size_t last = kNoTrack;
  for (int round = 0; round < 50; ++round) {
    std::set<size_t> named;
    for (int i = 0; i < 4; ++i) {
      const size_t next = order.Next();
      ASSERT_NE(next, last);
      last = next;
      named.insert(next);
    }
    ASSERT_EQ(named.size(), 4u);
  }
}

}  // namespace
}  // namespace velmora
