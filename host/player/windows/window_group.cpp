#include "host/player/windows/window_group.h"

#include "host/player/skin/geometry.h"

namespace velmora {
namespace {

constexpr int kReach = 10;  // pixels within which edges snap
constexpr int kGrip = 20;
constexpr Rect kNowhere = {-30000, -30000, 0, 0};

Rect WorkArea(const Rect& window) {
  const RECT at = {window.x, window.y, window.right(), window.bottom()};
  MONITORINFO info = {};
  info.cbSize = sizeof info;
  GetMonitorInfoW(MonitorFromRect(&at, MONITOR_DEFAULTTONEAREST), &info);
  const RECT& area = info.rcWork;
  return {area.left, area.top, area.right - area.left, area.bottom - area.top};
}

Rect Shifted(const Rect& r, Point by) {
  return {r.x + by.x, r.y + by.y, r.width, r.height};
}

}  // namespace

std::vector<Rect> WindowGroup::Places() const {
  std::vector<Rect> places;
  for (const SkinWindow* window : windows_) places.push_back(window->place());
  return places;
}

std::vector<bool> WindowGroup::DockedToMain(const std::vector<Rect>& places) const {
  std::vector<Rect> visible = places;
  for (size_t i = 1; i < windows_.size(); ++i) {
    if (!windows_[i]->visible()) visible[i] = kNowhere;
  }
  std::vector<bool> docked = DockedTo(0, visible);
  // Hidden ones follow, to be found where they were.
  for (size_t i = 1; i < windows_.size(); ++i) {
    if (!windows_[i]->visible()) docked[i] = true;
  }
  return docked;
}

void WindowGroup::BeginMove(SkinWindow* window, Point mouse) {
  mouse_ = mouse;
  from_ = Places();
  moved_.clear();
  const std::vector<bool> docked = DockedToMain(from_);
  for (size_t i = 0; i < windows_.size(); ++i) {
    if (windows_[i] == window || (window == windows_[0] && docked[i])) moved_.push_back(i);
  }
}

void WindowGroup::Move(Point mouse) {
  const Point way = {mouse.x - mouse_.x, mouse.y - mouse_.y};
  std::vector<bool> is_moved(windows_.size(), false);
  for (size_t i : moved_) is_moved[i] = true;
  std::vector<Rect> moved, others;  // that are seen: nothing snaps to the rest
  for (size_t i = 0; i < windows_.size(); ++i) {
    if (!windows_[i]->visible()) continue;
    if (is_moved[i]) {
      moved.push_back(Shifted(from_[i], way));
    } else {
      others.push_back(from_[i]);
    }
  }
  if (moved.empty()) return;
  const Point snap = SnapDistance(moved, others, WorkArea(moved[0]), kReach);
  for (size_t i : moved_) {
    windows_[i]->MoveTo({from_[i].x + way.x + snap.x, from_[i].y + way.y + snap.y});
  }
}

void WindowGroup::Stack() {
  Rect above = windows_[0]->place();
  for (size_t i = 1; i < windows_.size(); ++i) {
    windows_[i]->MoveTo({above.x, above.bottom()});
    above = windows_[i]->place();
  }
}

void WindowGroup::Rearrange(const std::vector<Rect>& before) {
  const std::vector<bool> docked = DockedToMain(before);
  const Rect main = windows_[0]->place();
  for (size_t i = 1; i < windows_.size(); ++i) {
    if (docked[i]) windows_[i]->MoveTo(FollowMain(before[i], before[0], main));
  }
}

void WindowGroup::Enable(bool enabled) {
  for (SkinWindow* window : windows_) {
    if (window != windows_[0]) EnableWindow(window->handle(), enabled);
  }
}

void WindowGroup::UpdateTips() {
  for (SkinWindow* window : windows_) window->UpdateTips();
}

void WindowGroup::RaiseDialog() const {
  constexpr UINT kOrderOnly = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;
  const HWND main = windows_[0]->handle();
  const HWND dialog = GetLastActivePopup(main);
  if (dialog == main || !IsWindowEnabled(dialog)) return;
  // In the order known here it is above all the time, and what changes nothing is not passed on.
  SetWindowPos(dialog, HWND_BOTTOM, 0, 0, 0, 0, kOrderOnly | SWP_NOOWNERZORDER);
  SetWindowPos(dialog, HWND_TOP, 0, 0, 0, 0, kOrderOnly);
  SetForegroundWindow(dialog);
}

void WindowGroup::BringIntoView() {
  for (SkinWindow* window : windows_) {
    const Rect place = window->place();
    // Enough of the title to be grasped.
    const RECT title = {place.x + kGrip, place.y + kGrip / 4, place.right() - kGrip,
                        place.y + kGrip / 2};
    if (MonitorFromRect(&title, MONITOR_DEFAULTTONULL)) continue;
    const Rect area = WorkArea(place);
    window->MoveTo({Clamp(place.x, area.x, area.right() - place.width),
                    Clamp(place.y, area.y, area.bottom() - place.height)});
  }
}

}  // namespace velmora
