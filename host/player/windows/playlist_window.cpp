#include "host/player/windows/playlist_window.h"

#include <algorithm>

#include "host/player/windows/player_app.h"
#include "host/text.h"
#include "host/texts.h"

namespace velmora {
namespace {

constexpr int kWheelRows = 3;

std::u16string TimeText(int64_t ms) {
  return ToView(MinutesSeconds(ms).text);
}

bool Down(int key) {
  return GetKeyState(key) < 0;
}

ListSelection::Click ClickNow() {
  return Down(VK_SHIFT)     ? ListSelection::Click::kExtend
         : Down(VK_CONTROL) ? ListSelection::Click::kToggle
                            : ListSelection::Click::kOnly;
}

}  // namespace

bool PlaylistWindow::Create(HWND owner) {
  return SkinWindow::Create(L"VelmoraPlaylist", L"Velmora Playlist", owner);
}

int PlaylistWindow::Count() const {
  return static_cast<int>(app_.player().tracks().size());
}

// Of the playing time; negative: none.
int PlaylistWindow::Second() const {
  const PlayerStatus status = app_.player().status();
  return status.state == PlayState::kStopped ? -1 : static_cast<int>(status.position_ms / 1000);
}

Size PlaylistWindow::CanvasSize() const {
  return {size_.width, rolled_ ? kPlaylistRolled : size_.height};
}

int PlaylistWindow::last_first() const {
  return std::max(0, Count() - PlaylistRows(size_));
}

// What was selected and in view in another list means nothing in this one.
void PlaylistWindow::FollowRenewal() {
  const uint32_t renewals = app_.player().renewals();
  if (renewals_ == renewals) return;
  renewals_ = renewals;
  selection_.SelectAll(false);
  first_ = 0;
  current_ = kNoTrack;
}

// Of the list as it is now.
ListSelection& PlaylistWindow::Selection() {
  FollowRenewal();
  selection_.SetCount(app_.player().tracks().size());
  return selection_;
}

// The track that is shown there; negative: none.
int PlaylistWindow::RowAt(Point point) const {
  const int row = PlaylistRowAt(size_, point.y);
  return row < PlaylistRows(size_) && first_ + row < Count() ? first_ + row : -1;
}

PlaylistViewState PlaylistWindow::State() {
  const std::vector<Track>& tracks = app_.player().tracks();
  const size_t current = app_.player().status().current;
  const ListSelection& selection = Selection();
  first_ = Clamp(first_, 0, last_first());
  PlaylistViewState state;
  state.size = CanvasSize();
  state.active = active();
  state.first = first_;
  state.last_first = last_first();
  if (inside_ || held_ == PlaylistControl::kScrollBar) state.pressed = held_;
  const size_t end = std::min(tracks.size(), static_cast<size_t>(first_ + PlaylistRows(size_)));
  int64_t selected_ms = 0;
  int64_t all_ms = 0;
  bool unknown = false;
  for (size_t i = 0; i < tracks.size(); ++i) {
    all_ms += tracks[i].length_ms;
    if (selection.Has(i)) selected_ms += tracks[i].length_ms;
    unknown = unknown || tracks[i].length_ms == 0;
    if (i < static_cast<size_t>(first_) || i >= end) continue;
    state.rows.push_back({ToView(std::to_wstring(i + 1) + L". " + tracks[i].title),
                          tracks[i].length_ms ? TimeText(tracks[i].length_ms) : std::u16string(),
                          i == current, selection.Has(i), tracks[i].trouble != Trouble::kNone});
  }
  if (Second() >= 0) state.play_time = TimeText(int64_t{1000} * Second());
  if (rolled_) state.rolled_text = ToView(app_.SongText());
  state.running_time = TimeText(selected_ms) + u"/" + TimeText(all_ms) + (unknown ? u"+" : u"");
  return state;
}

void PlaylistWindow::Draw(Canvas* canvas) {
  const PlaylistViewState state = State();
  DrawPlaylist(canvas, app_.skin(), state, app_.list_text());
  version_ = app_.player().list_version();
  second_ = Second();
}

std::vector<Tip> PlaylistWindow::OwnTips() const {
  const auto tip = [this](PlaylistControl control, int text) {
    return Tip{PlaylistButtonPlace(CanvasSize(), control), text};
  };
  std::vector<Tip> tips = {tip(PlaylistControl::kClose, TEXT_CLOSE),
                           tip(PlaylistControl::kShade, TEXT_TIP_SHADE)};
  if (rolled_) return tips;
  tips.push_back(tip(PlaylistControl::kAddMenu, TEXT_TIP_ADD));
  tips.push_back(tip(PlaylistControl::kRemoveMenu, TEXT_TIP_REMOVE));
  tips.push_back(tip(PlaylistControl::kSelectMenu, TEXT_TIP_SELECT));
  tips.push_back(tip(PlaylistControl::kMiscMenu, TEXT_TIP_MISC));
  tips.push_back(tip(PlaylistControl::kListMenu, TEXT_TIP_LIST));
  return tips;
}

void PlaylistWindow::Tick() {
  if (version_ == app_.player().list_version() && second_ == Second()) return;
  FollowRenewal();
  const size_t current = app_.player().status().current;
  if (current != current_ && current < static_cast<size_t>(Count())) ShowRow(current);
  current_ = current;
  Refresh();
}

void PlaylistWindow::Roll() {
  rolled_ = !rolled_;
  UpdateSize();
}

void PlaylistWindow::SetSize(Size size) {
  // No larger than all screens together: what is kept from a run before may say anything.
  size_ = PlaylistSizeNear({std::min(size.width, GetSystemMetrics(SM_CXVIRTUALSCREEN)),
                            std::min(size.height, GetSystemMetrics(SM_CYVIRTUALSCREEN))});
  UpdateSize();
}

void PlaylistWindow::SelectAll(bool selected) {
  Selection().SelectAll(selected);
  Refresh();
}

void PlaylistWindow::InvertSelection() {
  Selection().Invert();
  Refresh();
}

void PlaylistWindow::Remove(const std::vector<size_t>& tracks) {
  if (tracks.empty()) return;
  app_.player().Remove(tracks);
  selection_.SelectAll(false);
  app_.Refresh();
}

void PlaylistWindow::RemoveSelected() {
  Remove(Selection().Indices());
}

void PlaylistWindow::CropToSelected() {
  std::vector<size_t> others;
  for (size_t i = 0; i < static_cast<size_t>(Count()); ++i) {
    if (!Selection().Has(i)) others.push_back(i);
  }
  Remove(others);
}

size_t PlaylistWindow::Chosen() {
  const size_t cursor = Selection().cursor();
  return selection_.Has(cursor) ? cursor : app_.player().status().current;
}

void PlaylistWindow::OnArranged(const std::vector<size_t>& order) {
  Selection().OnArranged(order);
}

void PlaylistWindow::Choose(size_t index) {
  Selection().OnClick(index, ListSelection::Click::kOnly);
  ShowRow(index);
}

void PlaylistWindow::OnMenu(Point screen, Point point) {
  const bool in_list = PlaylistControlAt(CanvasSize(), point) == PlaylistControl::kList;
  const int row = in_list ? RowAt(point) : -1;
  if (row < 0) {
    SkinWindow::OnMenu(screen, point);
    return;
  }
  if (!Selection().Has(static_cast<size_t>(row))) Choose(static_cast<size_t>(row));
  app_.ShowEntryMenu(screen);
}

void PlaylistWindow::ScrollTo(int first) {
  first_ = Clamp(first, 0, last_first());
  Refresh();
}

void PlaylistWindow::ShowRow(size_t index) {
  const int row = static_cast<int>(index);
  const int rows = PlaylistRows(size_);
  if (row < first_) first_ = row;
  if (row >= first_ + rows) first_ = row - rows + 1;
  Refresh();
}

void PlaylistWindow::PressRow(Point point) {
  const int row = RowAt(point);
  if (row < 0) {
    SelectAll(false);
    return;
  }
  Selection().OnClick(static_cast<size_t>(row), ClickNow());
  SayTrouble(static_cast<size_t>(row));
  dragged_row_ = row;
}

void PlaylistWindow::SayTrouble(size_t index) {
  const Track& track = app_.player().tracks()[index];
  if (track.trouble == Trouble::kNone) return;
  app_.ShowHint(std::to_wstring(index + 1) + L". " + track.title + L": " + Describe(track.trouble));
}

void PlaylistWindow::DragRow(Point point) {
  if (dragged_row_ < 0 || dragged_row_ >= Count()) return;
  const int row = Clamp(first_ + PlaylistRowAt(size_, point.y), 0, Count() - 1);
  if (row == dragged_row_) return;
  app_.player().Move(static_cast<size_t>(dragged_row_), static_cast<size_t>(row));
  Selection().OnMoved(static_cast<size_t>(dragged_row_), static_cast<size_t>(row));
  dragged_row_ = row;
  ShowRow(static_cast<size_t>(row));
  app_.Refresh();  // the current track's number may be another
}

void PlaylistWindow::OnPress(Point point) {
  held_ = PlaylistControlAt(CanvasSize(), point);
  inside_ = true;
  press_ = {size_.width - point.x, size_.height - point.y};
  if (held_ == PlaylistControl::kList) PressRow(point);
  OnDrag(point);
}

void PlaylistWindow::OnDrag(Point point) {
  inside_ = PlaylistControlAt(CanvasSize(), point) == held_;
  switch (held_) {
    case PlaylistControl::kList:
      DragRow(point);
      break;
    case PlaylistControl::kScrollBar:
      ScrollTo(PlaylistFirstRowAt(size_, point.y, last_first()));
      break;
    case PlaylistControl::kSizeCorner: {
      const Size size = PlaylistSizeNear({point.x + press_.x, point.y + press_.y});
      if (!(size == size_)) SetSize(size);
      break;
    }
    default:
      break;
  }
  Refresh();
}

void PlaylistWindow::OnRelease(Point point) {
  const PlaylistControl control = held_;
  OnCancel();
  if (PlaylistControlAt(CanvasSize(), point) != control) return;
  if (control == PlaylistControl::kClose) app_.Do(kCommandPlaylistWindow);
  if (control == PlaylistControl::kShade) Roll();
  OpenMenu(control);
}

void PlaylistWindow::OnCancel() {
  held_ = PlaylistControl::kNone;
  dragged_row_ = -1;
  Refresh();
}

void PlaylistWindow::OnDoubleClick(Point point) {
  const PlaylistControl control = PlaylistControlAt(CanvasSize(), point);
  if (control == PlaylistControl::kTitleBar) Roll();
  if (control != PlaylistControl::kList) {
    OnPress(point);
    return;
  }
  const int row = RowAt(point);
  if (row >= 0) app_.PlayTrack(static_cast<size_t>(row));
}

void PlaylistWindow::OnWheel(int notches) {
  ScrollTo(first_ - notches * kWheelRows);
}

void PlaylistWindow::MoveCursor(int by) {
  if (Count() == 0) return;
  const int row = Clamp(static_cast<int>(Selection().cursor()) + by, 0, Count() - 1);
  const auto index = static_cast<size_t>(row);
  Selection().OnClick(index,
                      Down(VK_SHIFT) ? ListSelection::Click::kExtend : ListSelection::Click::kOnly);
  SayTrouble(index);
  ShowRow(index);
}

bool PlaylistWindow::OnKey(int key) {
  const int page = std::max(1, PlaylistRows(size_) - 1);
  switch (key) {
    case VK_UP:
      MoveCursor(-1);
      return true;
    case VK_DOWN:
      MoveCursor(1);
      return true;
    case VK_PRIOR:
      MoveCursor(-page);
      return true;
    case VK_NEXT:
      MoveCursor(page);
      return true;
    case VK_HOME:
      MoveCursor(-Count());
      return true;
    case VK_END:
      MoveCursor(Count());
      return true;
    case VK_DELETE:
      RemoveSelected();
      return true;
    case VK_RETURN:
      if (Selection().Has(selection_.cursor())) app_.PlayTrack(selection_.cursor());
      return true;
    default:
      return SkinWindow::OnKey(key);
  }
}

void PlaylistWindow::OpenMenu(PlaylistControl control) {
  const Rect button = PlaylistButtonPlace(size_, control);
  const Rect window = place();
  const int scale = app_.scale();
  app_.ShowPlaylistMenu(control, {window.x + button.x * scale, window.y + button.y * scale});
}

void PlaylistWindow::OnFiles(const std::vector<std::wstring>& paths) {
  app_.OnDropped(paths, false);
}

void PlaylistWindow::OnClose() {
  app_.Do(kCommandPlaylistWindow);
}

bool PlaylistWindow::IsHandle(Point point) const {
  const PlaylistControl control = PlaylistControlAt(CanvasSize(), point);
  return control == PlaylistControl::kTitleBar || control == PlaylistControl::kNone;
}

}  // namespace velmora
