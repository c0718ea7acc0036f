#include "host/player/windows/main_window.h"

#include <algorithm>
#include <iterator>

#include "host/player/windows/gdi_text.h"
#include "host/player/windows/player_app.h"
#include "host/text.h"
#include "host/texts.h"

namespace velmora {
namespace {

constexpr UINT_PTR kHintTimer = 2;
constexpr int kHintTickMs = 50;
constexpr int kHintMs = 1200;  // what fits; the rest comes in afterwards and stays as long
constexpr int kHintStep = 2;   // pixels a tick
constexpr int kWheelVolume = 4;

bool IsSlider(MainControl control) {
  return control == MainControl::kVolume || control == MainControl::kBalance ||
         control == MainControl::kPosition;
}

UserCommand CommandOf(MainControl control) {
  switch (control) {
    case MainControl::kMinimise:
      return kCommandMinimise;
    case MainControl::kShade:
      return kCommandShade;
    case MainControl::kClose:
      return kCommandExit;
    case MainControl::kPrevious:
      return kCommandPrevious;
    case MainControl::kPlay:
      return kCommandPlay;
    case MainControl::kPause:
      return kCommandPause;
    case MainControl::kStop:
      return kCommandStop;
    case MainControl::kNext:
      return kCommandNext;
    case MainControl::kEject:
      return kCommandOpenFiles;
    case MainControl::kShuffle:
      return kCommandShuffle;
    case MainControl::kRepeat:
      return kCommandRepeat;
    case MainControl::kEqualizer:
      return kCommandEqualizerWindow;
    case MainControl::kPlaylist:
      return kCommandPlaylistWindow;
    case MainControl::kTime:
      return kCommandTimeMode;
    case MainControl::kVisual:
      return kCommandVisualNext;
    default:
      return kCommandNone;
  }
}

int TipOf(MainControl control) {
  switch (control) {
    case MainControl::kMenu:
      return TEXT_TIP_MENU;
    case MainControl::kMinimise:
      return TEXT_TIP_MINIMISE;
    case MainControl::kShade:
      return TEXT_TIP_SHADE;
    case MainControl::kClose:
      return TEXT_CLOSE;
    case MainControl::kPrevious:
      return TEXT_TIP_PREVIOUS;
    case MainControl::kPlay:
      return TEXT_TIP_PLAY;
    case MainControl::kPause:
      return TEXT_TIP_PAUSE;
    case MainControl::kStop:
      return TEXT_TIP_STOP;
    case MainControl::kNext:
      return TEXT_TIP_NEXT;
    case MainControl::kEject:
      return TEXT_CAPTION_OPEN;
    case MainControl::kShuffle:
      return TEXT_TIP_SHUFFLE;
    case MainControl::kRepeat:
      return TEXT_TIP_REPEAT;
    case MainControl::kEqualizer:
      return TEXT_EQUALIZER;
    default:
      return TEXT_PLAYLIST;
  }
}

PlaySign SignOf(PlayState state) {
  return state == PlayState::kPlaying  ? PlaySign::kPlaying
         : state == PlayState::kPaused ? PlaySign::kPaused
                                       : PlaySign::kStopped;
}

std::wstring BalanceText(int balance) {
  if (balance == 0) return Text(TEXT_HINT_BALANCE_MIDDLE);
  return Text(balance < 0 ? TEXT_HINT_BALANCE_LEFT : TEXT_HINT_BALANCE_RIGHT,
              {std::to_wstring(std::abs(balance))});
}

}  // namespace

bool MainWindow::Create() {
  return SkinWindow::Create(L"VelmoraMain", L"Velmora", nullptr);
}

Size MainWindow::CanvasSize() const {
  return {kMainSize.width, shaded_ ? kTitleBarHeight : kMainSize.height};
}

MainState MainWindow::State() const {
  const PlayerStatus status = app_.player().status();
  MainState state;
  state.active = active();
  state.rolled = shaded_;
  state.pressed = inside_ || IsSlider(held_) ? held_ : MainControl::kNone;
  state.sign = SignOf(status.state);
  state.scroll =
      hint_.empty() ? scroll_ : std::max(0, hint_ms_ - kHintMs) / kHintTickMs * kHintStep;
  state.bit_rate = static_cast<int>(status.bit_rate_kbit);
  state.sample_rate = static_cast<int>(status.sample_rate_khz);
  state.channels = static_cast<int>(status.channels);
  state.volume = status.volume;
  state.balance = status.balance;
  state.shuffle = status.shuffle;
  state.repeat = status.repeat;
  state.equalizer_open = app_.equalizer_open();
  state.playlist_open = app_.playlist_open();
  state.visual = visual_;
  if (status.state == PlayState::kStopped) return state;
  const bool left =
      remaining_time_ && status.length_ms > 0 && status.length_ms >= status.position_ms;
  state.remaining = left;
  state.time_s =
      static_cast<int>((left ? status.length_ms - status.position_ms : status.position_ms) / 1000);
  if (sought_ >= 0) {
    state.position = sought_;
  } else if (status.length_ms > 0) {
    state.position = static_cast<int>(
        std::min<uint64_t>(uint64_t{status.position_ms} * kPositionSlider.most / status.length_ms,
                           kPositionSlider.most));
  }
  return state;
}

void MainWindow::Draw(Canvas* canvas) {
  ShowSongText();
  DrawMain(canvas, app_.skin(), State(), song_text_);
}

std::vector<Tip> MainWindow::OwnTips() const {
  std::vector<Tip> tips;
  for (const MainButton& button : kMainButtonTable) {
    if (!shaded_ || button.look.place.bottom() <= kTitleBarHeight) {
      tips.push_back({button.look.place, TipOf(button.control)});
    }
  }
  if (shaded_) return tips;
  tips.push_back({kVolumePlace, TEXT_TIP_VOLUME});
  tips.push_back({kBalancePlace, TEXT_TIP_BALANCE});
  tips.push_back({kPositionPlace, TEXT_TIP_POSITION});
  tips.push_back({kTimePlace, TEXT_TIP_TIME});
  tips.push_back({kVisualPlace, TEXT_VISUALISATION});
  return tips;
}

void MainWindow::ShowSongText() {
  const std::wstring song = app_.SongText();
  const std::wstring text = !hint_.empty() ? hint_ : !song.empty() ? song : L"VELMORA";
  if (text == song_text_of_) return;
  song_text_of_ = text;
  song_text_ = SongTextPicture(app_.skin(), text);
  scroll_ = 0;
}

void MainWindow::ShowTitle() {
  const bool stopped = app_.player().status().state == PlayState::kStopped;
  const std::wstring song = stopped ? L"" : app_.SongText();
  const std::wstring name =
      app_.player().silent() ? L"Velmora (" + Text(TEXT_NOTICE_NO_SOUND) + L")" : L"Velmora";
  const std::wstring title = song.empty() ? name : song + L" - " + name;
  if (title == title_) return;
  title_ = title;
  SetWindowTextW(handle(), title.c_str());
}

void MainWindow::Tick(uint32_t milliseconds) {
  ++scroll_;
  UpdateVisual(milliseconds);
  Refresh();
}

void MainWindow::Rest() {
  scroll_ = 0;
  SetVisualMode(visual_.mode);
}

void MainWindow::ShowHint(const std::wstring& text) {
  hint_ = text;
  hint_ms_ = 0;
  SetTimer(handle(), kHintTimer, kHintTickMs, nullptr);
  Refresh();
}

// A slider that is held, or a dialog over the window, keeps the hint as it is.
void MainWindow::OnHintTimer() {
  if (held_ != MainControl::kNone || !IsWindowEnabled(handle())) return;
  hint_ms_ += kHintTickMs;
  const int hidden = std::max(0, song_text_.width - kSongTextPlace.width);
  if (hint_ms_ > 2 * kHintMs + hidden / kHintStep * kHintTickMs) {
    KillTimer(handle(), kHintTimer);
    hint_.clear();
  }
  Refresh();
}

void MainWindow::SetShaded(bool shaded) {
  app_.windows().KeepTogether([&] {
    shaded_ = shaded;
    UpdateSize();
  });
}

void MainWindow::SetVisualMode(VisualMode mode) {
  spectrum_ = Spectrum();
  visual_ = VisualState();
  visual_.mode = mode;
  std::fill(std::begin(visual_.wave), std::end(visual_.wave), uint8_t{kPictureHeight / 2});
  Refresh();
}

void MainWindow::UpdateVisual(uint32_t milliseconds) {
  static_assert(kVisualBars == kSpectrumBars && kVisualPlace.height == kPictureHeight + 1);
  int16_t samples[kPictureSamples];
  if (visual_.mode == VisualMode::kOff) return;
  spectrum_.Fall(milliseconds);
  if (app_.player().Samples(samples)) {
    spectrum_.Take(samples);
    DrawWave(samples, visual_.wave, std::size(visual_.wave));
  }
  for (size_t i = 0; i < kSpectrumBars; ++i) {
    visual_.bars[i] = spectrum_.bar(i);
    visual_.peaks[i] = spectrum_.peak(i);
  }
}

void MainWindow::SlideTo(Point point) {
  Player& player = app_.player();
  if (held_ == MainControl::kVolume) {
    player.SetVolume(kVolumeSlider.ValueAt(point.x));
    ShowHint(Text(TEXT_HINT_VOLUME, {std::to_wstring(player.status().volume)}));
  } else if (held_ == MainControl::kBalance) {
    const int balance = kBalanceSlider.ValueAt(point.x) - 100;
    player.SetBalance(std::abs(balance) < 12 ? 0 : balance);  // the middle is easy to hit
    ShowHint(BalanceText(player.status().balance));
  } else if (held_ == MainControl::kPosition) {
    const PlayerStatus status = player.status();
    if (status.state == PlayState::kStopped || status.length_ms == 0) return;
    sought_ = kPositionSlider.ValueAt(point.x);
    const int64_t ms = int64_t{status.length_ms} * sought_ / kPositionSlider.most;
    ShowHint(
        Text(TEXT_HINT_SEEK, {MinutesSeconds(ms).text, MinutesSeconds(status.length_ms).text}));
  }
}

void MainWindow::OnPress(Point point) {
  held_ = MainControlAt(point);
  inside_ = true;
  sought_track_ = app_.player().status().current;
  SlideTo(point);
  Refresh();
}

void MainWindow::OnDrag(Point point) {
  inside_ = MainControlAt(point) == held_;
  SlideTo(point);
  Refresh();
}

void MainWindow::OnRelease(Point point) {
  const MainControl control = held_;
  const int sought = sought_;
  OnCancel();
  if (sought >= 0) {
    const PlayerStatus status = app_.player().status();
    const uint64_t ms = uint64_t{status.length_ms} * sought / kPositionSlider.most;
    // At the very end there is nothing to hear; and the track may have ended meanwhile.
    if (status.length_ms > 0 && status.current == sought_track_) {
      app_.player().SeekMs(static_cast<uint32_t>(std::min<uint64_t>(ms, status.length_ms - 1)));
    }
    Refresh();
  }
  if (MainControlAt(point) == control) Click(control);
}

void MainWindow::OnCancel() {
  held_ = MainControl::kNone;
  sought_ = -1;
  Refresh();
}

void MainWindow::Click(MainControl control) {
  if (control == MainControl::kMenu) {
    const Rect window = place();
    app_.ShowMenu({window.x + 6 * app_.scale(), window.y + 12 * app_.scale()});
    return;
  }
  const UserCommand command = CommandOf(control);
  if (command != kCommandNone) app_.Do(command);
}

void MainWindow::OnDoubleClick(Point point) {
  if (IsHandle(point)) {
    app_.Do(kCommandShade);
  } else {
    OnPress(point);
  }
}

void MainWindow::OnWheel(int notches) {
  app_.ChangeVolume(notches * kWheelVolume);
}

void MainWindow::OnClose() {
  app_.Do(kCommandExit);
}

bool MainWindow::IsHandle(Point point) const {
  const MainControl control = MainControlAt(point);
  return control == MainControl::kTitleBar || control == MainControl::kNone;
}

LRESULT MainWindow::OnOther(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_TIMER && wparam == kHintTimer) {
    OnHintTimer();
    return 0;
  }
  if (message == WM_COPYDATA) {
    return app_.OnHandedOver(*reinterpret_cast<const COPYDATASTRUCT*>(lparam));
  }
  if (app_.OnMessage(message, wparam, lparam)) return 0;
  return SkinWindow::OnOther(message, wparam, lparam);
}

}  // namespace velmora
