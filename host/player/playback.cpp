#include "host/player/playback.h"

#include <kelvo/messages.h>
#include <kelvo/wma_input.h>
#include <limits.h>

#include <utility>

namespace velmora {
namespace {

bool TakeEndMessage(HWND window) {
  MSG message;
  return window && PeekMessageW(&message, window, kelvo::kMessageEndOfPlayback,
                                kelvo::kMessageEndOfPlayback, PM_REMOVE) != FALSE;
}

}  // namespace

static_assert(kPictureSamples == kelvo::kVisualisationSamples);

Playback::Playback(const Library& library, HWND window) : library_(library), window_(window) {
  if (auto* effects = library.Get<kelvo::EffectsProcessor>(kelvo::kFeatureEffects)) {
    effects_.emplace(tap_, *effects);
  }
}

Playback::Start Playback::Play(std::wstring path, uint32_t start_ms) {
  while (input_) Stop();
  input_.emplace(library_, path);
  if (input_->Missing()) {
    input_.reset();
    return Start::kNoPlugin;
  }
  if (input_->has_own_output()) device_.Finish();
  plugin().SetReader(&reader_);
  plugin().SetOutput(effects_ ? static_cast<kelvo::AudioOutput*>(&*effects_) : &tap_);
  input_->SetWindow(window_);  // before a name can be refused, which is said in a message box
  if (!plugin().Open(path.c_str(), 0)) {
    Release();
    return Start::kNotPlayable;
  }
  path_ = std::move(path);
  Describe();
  while (OwnSamples(nullptr)) {
  }
  sounded_ = false;
  wanted_ms_ = 0;
  if (start_ms > 0) SeekMs(start_ms);
  if (plugin().Play() && HasStarted()) return Start::kPlaying;
  Stop();
  return Start::kNoOutput;
}

// A short file may be over already: the state does not tell it from a failed output.
bool Playback::HasStarted() {
  return input_->has_own_output() ? plugin().GetState() != kelvo::kStopped : tap_.opened();
}

void Playback::Describe() {
  wchar_t title[kelvo::kMaxText] = L"";
  format_ = {};
  plugin().GetDisplayTitle(title);
  plugin().GetMediaInfo(&format_);
  input_->CompleteFormat(path_, &format_);
  title_ = title;
  const int32_t length = plugin().GetLengthMs();
  length_ms_ = length > 0 ? static_cast<uint32_t>(length) : 0;
}

void Playback::Stop() {
  if (!input_) return;
  plugin().Stop();
  plugin().SetState(kelvo::kStopped);  // a late seek leaves it as it was
  plugin().Close(0, 0);
  Release();
  DropEndMessages();
}

void Playback::Release() {
  input_->SetWindow(nullptr);
  plugin().SetOutput(nullptr);
  plugin().SetReader(nullptr);
  input_.reset();
}

// Nobody posts any more; what waits would end the next file. Looking for it lets messages in that
// another thread sends: they may stop and play.
void Playback::DropEndMessages() {
  while (TakeEndMessage(window_)) {
  }
}

// A control that pauses by stopping forgets its place until it plays again.
void Playback::TogglePause() {
  if (!paused()) rest_ms_ = position_ms();
  plugin().TogglePause();
}

uint32_t Playback::position_ms() const {
  if (paused()) return rest_ms_;
  const int32_t position = plugin().GetPositionMs(0, 0);
  return position > 0 ? static_cast<uint32_t>(position) : 0;
}

bool Playback::SeekMs(uint32_t ms) {
  if (ms > INT_MAX || (length_ms_ > 0 && ms >= length_ms_)) return false;
  if (!plugin().SeekMs(static_cast<int32_t>(ms))) return false;
  wanted_ms_ = ms;
  rest_ms_ = ms;
  return true;
}

bool Playback::ResumeAfterLateSeek() {
  const uint32_t state = plugin().GetState();
  if (input_->has_own_output() || state == kelvo::kStopped) return false;
  plugin().Stop();
  plugin().SetState(kelvo::kStopped);
  if (!plugin().SeekMs(static_cast<int32_t>(wanted_ms_)) || !plugin().Play()) return false;
  if (state == kelvo::kPaused) TogglePause();
  return HasStarted();
}

// Null: throws away.
bool Playback::OwnSamples(int16_t* samples) {
  auto* wma = input_->wma();
  int16_t unwanted[kPictureSamples];
  return wma && wma->GetVisualisation(samples ? samples : unwanted) != 0;
}

bool Playback::Samples(int16_t (&samples)[kPictureSamples]) {
  if (!input_->has_own_output()) return tap_.Samples(samples);
  const bool some = OwnSamples(samples);
  sounded_ = sounded_ || some;
  return some;
}

bool Playback::has_sounded() {
  if (!input_->has_own_output()) return tap_.written_any();
  sounded_ = sounded_ || OwnSamples(nullptr);
  return sounded_;
}

}  // namespace velmora
