#pragma once

#include <string>

#include "host/player/play_order.h"
#include "host/player/spectrum.h"
#include "host/player/views/main_view.h"
#include "host/player/windows/skin_window.h"

namespace velmora {

// The window with the display and the transport; also the one that the library posts its messages
// to.
class MainWindow final : public SkinWindow {
 public:
  explicit MainWindow(PlayerApp& app) : SkinWindow(app) {}

  bool Create();

  // This time has passed while music plays.
  void Tick(uint32_t milliseconds);
  // The music has stopped: nothing of it stays in the window.
  void Rest();
  // Shows a text instead of the song's for as long as it takes to read.
  void ShowHint(const std::wstring& text);
  // Names the song in the task bar, also while minimised; while stopped only the program.
  void ShowTitle();
  // The skin has changed: pictures made with it are made anew.
  void ForgetPictures() { song_text_of_.clear(); }

  bool remaining_time() const { return remaining_time_; }
  void SetRemainingTime(bool on) { remaining_time_ = on; }
  bool shaded() const { return shaded_; }
  void SetShaded(bool shaded);
  VisualMode visual_mode() const { return visual_.mode; }
  void SetVisualMode(VisualMode mode);

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
  void OnClose() override;
  bool IsHandle(Point point) const override;
  LRESULT OnOther(UINT message, WPARAM wparam, LPARAM lparam) override;

  MainState State() const;
  void ShowSongText();
  void SlideTo(Point point);
  void Click(MainControl control);
  void UpdateVisual(uint32_t milliseconds);
  void OnHintTimer();

  MainControl held_ = MainControl::kNone;  // what the mouse went down on
  bool inside_ = false;                    // and whether it is on it
  int sought_ = -1;                        // of the position slider while it is held
  size_t sought_track_ = kNoTrack;         // what played then
  bool shaded_ = false;
  bool remaining_time_ = false;
  std::wstring title_;  // of the window
  std::wstring hint_;
  int hint_ms_ = 0;            // that the hint has been seen
  std::wstring song_text_of_;  // what song_text_ is a picture of
  Bitmap song_text_;
  int scroll_ = 0;
  Spectrum spectrum_;
  VisualState visual_;
};

}  // namespace velmora
