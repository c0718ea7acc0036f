#include <gtest/gtest.h>

#include "host/player/skin/geometry.h"
#include "host/player/views/list_selection.h"

namespace velmora {
namespace {

using Click = ListSelection::Click;
using Indices = std::vector<size_t>;

TEST(ListSelectionTest, Clicks) {
  ListSelection selection;
  selection.SetCount(6);
  const struct {
    const char* name;
    size_t index;
    Click click;
    Indices want;
  } steps[] = {
      {"one", 2, Click::kOnly, {2}},
      {"another one more", 4, Click::kToggle, {2, 4}},
      {"not that", 4, Click::kToggle, {2}},
      {"from the last one to here", 3, Click::kExtend, {3, 4}},
      {"the other way", 5, Click::kExtend, {4, 5}},
      {"outside", 6, Click::kOnly, {4, 5}},
      {"one again", 1, Click::kOnly, {1}},
  };
  for (const auto& step : steps) {
    SCOPED_TRACE(step.name);
    selection.OnClick(step.index, step.click);
    EXPECT_EQ(selection.Indices(), step.want);
  }
}

TEST(ListSelectionTest, FollowsTheList) {
  ListSelection selection;
  selection.SetCount(0);
  selection.OnClick(0, Click::kOnly);
  EXPECT_TRUE(selection.Indices().empty());
  selection.SetCount(4);
  selection.OnClick(1, Click::kOnly);
  selection.OnMoved(1, 3);
  EXPECT_EQ(selection.Indices(), Indices{3});
  EXPECT_EQ(selection.cursor(), 3u);
  selection.OnMoved(0, 3);
  EXPECT_EQ(selection.Indices(), Indices{2});
  selection.OnMoved(0, 4);
  selection.SetCount(2);
  EXPECT_TRUE(selection.Indices().empty());
  EXPECT_EQ(selection.cursor(), 1u);
  selection.Invert();
  EXPECT_EQ(selection.Indices(), (Indices{0, 1}));
  selection.OnClick(0, Click::kExtend);  // from the anchor, which is still in the list
  EXPECT_EQ(selection.Indices(), (Indices{0, 1}));
}

constexpr Rect kScreen = {0, 0, 1000, 800};

TEST(DockingTest, EdgesSnap) {
  const Rect other = {400, 300, 100, 50};
  const struct {
    const char* name;
    Rect moved;
    Point want;
  } cases[] = {
      {"far from everything", {100, 100, 100, 50}, {0, 0}},
      {"below, same left edge", {393, 355, 100, 50}, {7, -5}},
      {"above", {405, 245, 100, 50}, {-5, 5}},
      {"right of it", {505, 310, 100, 50}, {-5, -10}},
      {"overlapping a little", {405, 342, 100, 50}, {-5, 8}},
      {"just too far below", {393, 361, 100, 50}, {0, 0}},
      {"below but beside", {600, 352, 100, 50}, {0, 0}},
      {"left edge of the screen", {-8, 100, 100, 50}, {8, 0}},
      {"corner of the screen", {905, 745, 100, 50}, {-5, 5}},
      {"outside of the screen's edge does not hold", {-109, 100, 100, 50}, {0, 0}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const Point way = SnapDistance({c.moved}, {other}, kScreen, 10);
    EXPECT_EQ(way.x, c.want.x);
    EXPECT_EQ(way.y, c.want.y);
  }
}

TEST(DockingTest, TheNearestEdgeOfAllMovedWindowsCounts) {
  // The second one is nearer to the edge.
  const Point way = SnapDistance({{8, 100, 100, 50}, {3, 150, 100, 50}}, {}, kScreen, 10);
  EXPECT_EQ(way.x, -3);
}

TEST(DockingTest, WindowsHangTogether) {
  const std::vector<Rect> windows = {
      {0, 0, 100, 50},     // main
      {0, 100, 100, 50},   // below the next
      {0, 50, 100, 50},    // below main
      {100, 50, 100, 50},  // right of that, touching main's corner only
      {300, 0, 100, 50},   // alone
  };
  EXPECT_EQ(DockedTo(0, windows), (std::vector<bool>{true, true, true, true, false}));
  EXPECT_FALSE(Touch(windows[0], windows[3])) << "corners do not hold";
  EXPECT_EQ(DockedTo(4, windows), (std::vector<bool>{false, false, false, false, true}));
}

TEST(DockingTest, WindowsStillTouchInAnotherScale) {
  const Rect large = {101, 99, 550, 232};
  const Rect small = {101, 99, 275, 116};
  const auto follow = [&](const Rect& window) {
    const Point to = FollowMain(window, large, small);
    return Rect{to.x, to.y, window.width / 2, window.height / 2};
  };
  // Beside the main one, at any height; and below that.
  for (int y = 99 - 230; y < 99 + 232; ++y) {
    const Rect beside = {large.right(), y, 550, 232};
    const Rect below = {large.right(), beside.bottom(), 550, 232};
    EXPECT_EQ(follow(beside).x, small.right());
    EXPECT_TRUE(Touch(small, follow(beside))) << y;
    EXPECT_EQ(follow(below).y, follow(beside).bottom()) << y;
  }
  const Rect rolled_up = {101, 99, 550, 28};
  EXPECT_EQ(FollowMain({120, 331, 550, 232}, large, rolled_up), (Point{120, 127}));
}

}  // namespace
}  // namespace velmora
