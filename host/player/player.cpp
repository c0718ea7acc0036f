#include "host/player/player.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "host/player/file_search.h"
#include "host/sound_state.h"
#include "host/texts.h"

namespace velmora {
namespace {

// Where an output of the plug-in's own shows no sound, it may be that it cannot be looked into:
// then a track is broken when it ends sooner.
constexpr DWORD kShortestTrackMs = 1000;

// The first sound device; there the volume is everybody's, also that of a plug-in's own output.
HWAVEOUT FirstDevice() {
  return nullptr;
}

}  // namespace

Player::Player(const Library& library, HWND window)
    : library_(library), order_(GetTickCount()), playback_(library, window) {
  silent_ = !WaveOutput::HasDevice();
  if (silent_) SendSoundNowhere();
  SetEqualizer(equalizer_);
}

bool Player::Add(const std::vector<std::wstring>& paths) {
  std::vector<std::wstring> files;
  FileSearch search(paths);
  while (search.Step(&files)) {
  }
  return Append(files) > 0;
}

size_t Player::Append(const std::vector<std::wstring>& files) {
  const size_t before = list_.size();
  for (const std::wstring& file : files) list_.Append(file);
  order_.Append(list_.size() - before);
  Changed();
  return list_.size() - before;
}

void Player::Renewed() {
  ++renewals_;
  Changed();
}

void Player::Clear() {
  list_.Clear();
  order_.Clear();
  Renewed();
}

void Player::Remove(const std::vector<size_t>& indices) {
  std::vector<size_t> sorted = indices;
  std::sort(sorted.begin(), sorted.end(), std::greater<size_t>());
  sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
  sorted.erase(sorted.begin(), std::find_if(sorted.begin(), sorted.end(),
                                            [&](size_t index) { return index < list_.size(); }));
  if (sorted.size() == list_.size()) {  // one by one, a long list would take its time
    Clear();
    return;
  }
  for (const size_t index : sorted) {
    list_.Remove(index);
    order_.Remove(index);
  }
  Changed();
}

void Player::Move(size_t from, size_t to) {
  if (from >= list_.size() || to >= list_.size()) return;
  list_.Move(from, to);
  order_.Move(from, to);
  Changed();
}

bool Player::Arrange(const std::vector<size_t>& order) {
  if (order.size() != list_.size()) return false;
  list_.Arrange(order);
  order_.Arrange(order);
  Changed();
  return true;
}

bool Player::LearnNext() {
  const size_t unknown = list_.FirstUnknown();
  if (unknown == list_.size()) return false;
  list_.Learn(library_, unknown);
  Changed();
  return true;
}

void Player::Play() {
  if (!playback_.is_open()) {
    PlayTrack(order_.current() != kNoTrack ? order_.current() : 0);
  } else if (playback_.paused()) {
    playback_.TogglePause();
  } else {
    playback_.SeekMs(0);
  }
}

bool Player::PlayTrack(size_t index, uint32_t start_ms) {
  return PlayFrom(index, start_ms, &PlayOrder::Next);
}

// A file is not to blame for an output that cannot be opened.
void Player::PassOver(size_t index, Playback::Start failure) {
  const Track& track = list_.tracks()[index];
  const bool no_output = failure == Playback::Start::kNoOutput;
  if (!no_output) list_.SetTrouble(index, TroubleOf(library_, track.path));
  if (++passed_over_count_ > 1) return;
  passed_over_ = std::to_wstring(index + 1) + L". " + track.title + L": " +
                 (no_output ? Text(TEXT_TROUBLE_OUTPUT) : Describe(track.trouble));
}

void Player::SayPassedOver() {
  if (passed_over_count_ == 1) AddNotice(Text(TEXT_NOTICE_NOT_PLAYED, {passed_over_}));
  if (passed_over_count_ > 1) {
    AddNotice(
        Text(TEXT_NOTICE_NOT_PLAYED_MORE, {passed_over_, std::to_wstring(passed_over_count_ - 1)}));
  }
  passed_over_count_ = 0;
}

void Player::AddNotice(const std::wstring& text) {
  if (!notice_.empty()) notice_ += L"; ";
  notice_ += text;
}

std::wstring Player::TakeNotice() {
  return std::exchange(notice_, std::wstring());
}

bool Player::PlayFrom(size_t index, uint32_t start_ms, Step onward) {
  playback_.Stop();
  if (index >= list_.size()) return false;
  const size_t asked = index;
  // Shuffled anew on the way, the order may name a track twice before it has named all.
  std::vector<bool> tried(list_.size());
  const auto listed = [&] { return index < list_.size(); };  // messages that come in may change it
  for (size_t left = tried.size(); left > 0 && listed(); index = (order_.*onward)()) {
    order_.SetCurrent(index);
    if (index >= tried.size() || tried[index]) continue;
    tried[index] = true;
    --left;
    const uint32_t from_ms = index == asked ? start_ms : 0;
    const Playback::Start start = playback_.Play(list_.tracks()[index].path, from_ms);
    if (start == Playback::Start::kPlaying) {
      started_ = GetTickCount();
      if (listed()) {
        if (!list_.tracks()[index].known) list_.Learn(library_, index);
        list_.SetTrouble(index, Trouble::kNone);
      }
      SayPassedOver();
      Changed();
      return true;
    }
    if (listed()) PassOver(index, start);
  }
  playback_.Finish();
  SayPassedOver();
  order_.SetCurrent(asked);
  Changed();
  return false;
}

void Player::Choose(size_t index) {
  order_.SetCurrent(index);
  Changed();
}

void Player::TogglePause() {
  if (playback_.is_open()) playback_.TogglePause();
}

void Player::Stop() {
  playback_.Stop();
  playback_.Silence();
}

void Player::Next() {
  const size_t index = order_.Next();
  if (index == kNoTrack) return;
  Changed();
  if (playback_.is_open()) PlayTrack(index);
}

void Player::Previous() {
  const size_t before = order_.current();
  const size_t previous = order_.Previous();
  const size_t index = previous != kNoTrack ? previous : before;
  if (index == kNoTrack) return;
  Changed();
  if (!playback_.is_open() || PlayFrom(index, 0, &PlayOrder::Previous)) return;
  PlayTrack(before);  // there is nothing to go back to
}

bool Player::SeekMs(uint32_t ms) {
  return playback_.is_open() && playback_.SeekMs(ms);
}

void Player::OnEndOfPlayback() {
  if (!playback_.is_open() || playback_.ResumeAfterLateSeek()) return;
  const bool unheard = EndedUnheard();
  unheard_ = unheard ? unheard_ + 1 : 0;
  if (unheard && order_.current() < list_.size()) {
    PassOver(order_.current(), Playback::Start::kNotPlayable);
  }
  const size_t next = unheard_ < list_.size() ? order_.Next() : kNoTrack;
  if (playback_.output_failed()) AddNotice(Text(TEXT_NOTICE_OUTPUT_FAILED));
  playback_.Stop();
  if (next == kNoTrack) {
    unheard_ = 0;
    SayPassedOver();
    playback_.Finish();
  } else {
    PlayTrack(next);
  }
}

bool Player::EndedUnheard() {
  return !playback_.has_sounded() &&
         (!playback_.input().has_own_output() || GetTickCount() - started_ < kShortestTrackMs);
}

void Player::SetVolume(int volume) {
  volume_ = std::clamp(volume, 0, 100);
  ApplyVolume();
}

void Player::SetBalance(int balance) {
  balance_ = std::clamp(balance, -100, 100);
  ApplyVolume();
}

void Player::ApplyVolume() {
  waveOutSetVolume(FirstDevice(), DeviceVolume(volume_, balance_));
}

PlayerStatus Player::status() const {
  PlayerStatus status;
  status.volume = volume_;
  status.balance = balance_;
  status.shuffle = order_.shuffle();
  status.repeat = order_.repeat();
  status.current = order_.current();
  if (!playback_.is_open()) return status;
  const kelvo::MediaInfo& format = playback_.format();
  status.state = playback_.paused() ? PlayState::kPaused : PlayState::kPlaying;
  status.position_ms = playback_.position_ms();
  status.length_ms = playback_.length_ms();
  status.title = playback_.title();
  status.bit_rate_kbit = format.bit_rate;
  status.sample_rate_khz = playback_.input().SampleRateHz(format) / 1000;
  status.channels = format.stereo ? 2 : 1;
  return status;
}

void Player::SetEqualizer(const EqualizerState& state) {
  equalizer_ = state;
  clipping_said_ = false;
  if (auto* effects = library_.Get<kelvo::EffectsProcessor>(kelvo::kFeatureEffects)) {
    Apply(equalizer_, *effects);
  }
}

bool Player::TakeClipped() {
  if (!playback_.TakeClipped()) return false;
  if (!clipping_said_) AddNotice(Text(TEXT_HINT_CLIPS));
  clipping_said_ = true;
  return true;
}

bool Player::Samples(int16_t (&samples)[kPictureSamples]) {
  return playback_.is_open() && playback_.Samples(samples);
}

}  // namespace velmora
