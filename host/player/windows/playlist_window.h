#pragma once

#include "host/player/play_order.h"
#include "host/player/views/list_selection.h"
#include "host/player/views/playlist_view.h"
#include "host/player/windows/skin_window.h"

namespace velmora {

class PlaylistWindow final : public SkinWindow {
 public:
  explicit PlaylistWindow(PlayerApp& app) : SkinWindow(app) {}

  bool Create(HWND owner);

  // Follows what plays, and repaints when the list has changed.
  void Tick();
  void SelectAll(bool selected);
  void InvertSelection();
  void RemoveSelected();
  void CropToSelected();
  // The row that the user has chosen; without one the current track's, or kNoTrack.
  size_t Chosen();
  // The list is in another order: what was selected is so at its new place.
  void OnArranged(const std::vector<size_t>& order);
  // The row alone, in view.
  void Choose(size_t index);

  Size size() const { return size_; }
  void SetSize(Size size);  // the nearest possible

 private:
  Size CanvasSize() const override;
  void Draw(Canvas* canvas) override;
  std::vector<Tip> OwnTips() const override;
  void OnPress(Point point) override;
  void OnDrag(Point point) override;
  void OnRelease(Point point) override;
  void OnCancel() override;
  void OnDoubleClick(Point point) override;
  void OnWheel(int notches) override;
  bool OnKey(int key) override;
  void OnMenu(Point screen, Point point) override;
  void OnClose() override;
  void OnFiles(const std::vector<std::wstring>& paths) override;
  bool IsHandle(Point point) const override;

  PlaylistViewState State();
  ListSelection& Selection();
  void FollowRenewal();
  void Roll();  // up to the title bar, or down again
  int last_first() const;
  int RowAt(Point point) const;
  void ScrollTo(int first);
  void ShowRow(size_t index);
  void PressRow(Point point);
  void SayTrouble(size_t index);  // why a track that is marked cannot be played
  void DragRow(Point point);
  void MoveCursor(int by);
  void OpenMenu(PlaylistControl control);
  void Remove(const std::vector<size_t>& tracks);
  int Count() const;
  int Second() const;

  Size size_ = kPlaylistLeast;
  bool rolled_ = false;
  int first_ = 0;            // the first row in view
  ListSelection selection_;  // by Selection()
  uint32_t renewals_ = 0;    // of the list that the selection is of
  PlaylistControl held_ = PlaylistControl::kNone;
  int dragged_row_ = -1;       // the row that is being moved by the mouse
  Point press_ = {0, 0};       // while the corner is held: where, in the window
  bool inside_ = false;        // the mouse is on what it went down on
  uint32_t version_ = 0;       // of the list, as drawn
  int second_ = -1;            // of the playing time, as drawn
  size_t current_ = kNoTrack;  // that was scrolled to
};

}  // namespace velmora
