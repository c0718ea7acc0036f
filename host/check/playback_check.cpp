// The Ogg Vorbis plug-in with a file: what it says about it, and playing.
#include <string.h>

#include <mutex>

#include "host/check/host_objects.h"
#include "host/check/subject.h"

namespace velmora::check {
namespace {

using Ogg = KelvoOggVorbisInput;

// A table of the host's in the place of the plug-in's own, which sees the changes of the state.
class OwnTable {
 public:
  explicit OwnTable(Ogg* ogg) : ogg_(ogg) {
    theirs_ = ogg->table;
    ours_ = *theirs_;
    ours_.SetState = &SetState;
    ours_.GetState = &GetState;
    states_.clear();
    queries_ = 0;
    ogg->table = &ours_;
  }
  ~OwnTable() { ogg_->table = theirs_; }
  OwnTable(const OwnTable&) = delete;
  OwnTable& operator=(const OwnTable&) = delete;

  static int queries() {
    const std::lock_guard<std::mutex> guard(mutex_);
    return queries_;
  }
  static std::string states() {
    const std::lock_guard<std::mutex> guard(mutex_);
    return states_;
  }

 private:
  static void KELVO_METHOD SetState(KELVO_SELF(KelvoOggVorbisInput), uint32_t state) {
    const std::lock_guard<std::mutex> guard(mutex_);
    states_ += static_cast<char>('0' + state);
    theirs_->SetState(KELVO_ON(self), state);
  }
  static uint32_t KELVO_METHOD GetState(KELVO_SELF(KelvoOggVorbisInput)) {
    const std::lock_guard<std::mutex> guard(mutex_);
    ++queries_;
    return theirs_->GetState(KELVO_ON(self));
  }

  Ogg* ogg_;
  static inline KelvoOggVorbisInputTable ours_;
  static inline const KelvoOggVorbisInputTable* theirs_;
  static inline std::mutex mutex_;
  static inline std::string states_;
  static inline int queries_;
};

class Playback {
 public:
  Playback(const Subject& subject, Report& report)
      : subject_(subject),
        report_(report),
        ogg_(subject.Get<Ogg>(KELVO_FEATURE_OGG_VORBIS)),
        reader_(ReadBytes(subject.ogg)) {
    ogg_->reader = &reader_;
    ogg_->output = &output_;
    table().SetNotifyWindow(KELVO_ON(ogg_), subject.window);
  }
  ~Playback() {
    reader_.lets_close = true;
    table().Stop(KELVO_ON(ogg_));
    table().Close(KELVO_ON(ogg_), 0, 0);
    table().SetNotifyWindow(KELVO_ON(ogg_), nullptr);
    ogg_->reader = nullptr;
    ogg_->output = nullptr;
  }
  Playback(const Playback&) = delete;
  Playback& operator=(const Playback&) = delete;

  bool Opens();
  void CheckInformation();
  void CheckFailingOutput();
  void CheckWholeFile();
  void CheckPauseAndStop();
  void CheckSeeking();
  void CheckOwnTable();
  void CheckDamage();
  void CheckClosing();

 private:
  const KelvoOggVorbisInputTable& table() const { return *ogg_->table; }
  int32_t Play() { return table().Play(KELVO_ON(ogg_)); }
  int32_t Stop() { return table().Stop(KELVO_ON(ogg_)); }
  int32_t Seek(int32_t ms) { return table().SeekMs(KELVO_ON(ogg_), ms); }
  int32_t Position(KelvoHostWord a, KelvoHostWord b) {
    return table().GetPositionMs(KELVO_ON(ogg_), a, b);
  }
  int32_t Length() { return table().GetLengthMs(KELVO_ON(ogg_)); }
  int32_t Milliseconds(uint32_t frames) const {
    return static_cast<int32_t>(static_cast<double>(frames) / ogg_->sample_rate * 1000);
  }
  // The next end-of-playback message, or one with number 0 when none comes.
  MSG AwaitEnd();
  void Says(const char* sentence, bool holds) { report_.Says(sentence, holds); }

  const Subject& subject_;
  Report& report_;
  Ogg* const ogg_;
  Reader reader_;
  Output output_;
  std::string whole_;  // the samples of the file
};

MSG Playback::AwaitEnd() {
  for (int i = 0; i < kWaitMs / 10; ++i) {
    const MSG message = TakeMessage(subject_.window, KELVO_MESSAGE_END_OF_PLAYBACK);
    if (message.message != 0) return message;
    Sleep(10);
  }
  return {};
}

bool Playback::Opens() {
  for (uint32_t& word : ogg_->reserved) word = 9;
  for (uint32_t& word : ogg_->more_reserved) word = 9;
  const bool opened = table().Open(KELVO_ON(ogg_), L"\\Music\\Track.ogg", 3) != 0;
  Says("Open accepts an Ogg Vorbis file", opened);
  if (!opened) return false;
  Says("Open clears the reserved words and keeps the path",
       ogg_->reserved[0] + ogg_->reserved[1] + ogg_->more_reserved[0] + ogg_->more_reserved[1] ==
               0 &&
           wcscmp(ogg_->path, L"\\Music\\Track.ogg") == 0);
  void* source = nullptr;
  memcpy(&source, ogg_->stream, sizeof(source));
  Says("The stream's first word is the reader", source == static_cast<KelvoMediaReader*>(&reader_));
  Says("Open leaves the plug-in stopped", table().GetState(KELVO_ON(ogg_)) == KELVO_STOPPED);
  return true;
}

void Playback::CheckInformation() {
  Says("GetLengthMs is the frames divided by the rate, cut to milliseconds",
       Length() > 0 && Length() == Milliseconds(ogg_->total_frames));
  Says("A position from before the start is 0", Position(0, 0) == 0);
  wchar_t title[KELVO_MAX_TEXT] = L"";
  Says("GetDisplayTitle writes a title and answers non-zero",
       table().GetDisplayTitle(KELVO_ON(ogg_), title) != 0 && title[0] != 0);
  KelvoMediaInfo info = {};
  memset(info.genre, 0xFF, sizeof(info.genre));
  table().GetMediaInfo(KELVO_ON(ogg_), &info);
  Says("GetMediaInfo has the rate in Hz, kbit/s, the flag of two channels, a terminated genre",
       info.sample_rate == ogg_->sample_rate && info.bit_rate == ogg_->bit_rate &&
           info.stereo == (ogg_->channels == 2) && info.genre[31] == 0);
  wchar_t asked_title[KELVO_MAX_TEXT] = L"";
  KelvoMediaInfo asked = {};
  uint32_t length = 0;
  const bool known = table().GetFileInfo(KELVO_ON(ogg_), subject_.ogg.c_str(), asked_title, nullptr,
                                         &asked, &length, nullptr, nullptr, nullptr) != 0;
  Says("GetFileInfo tells the same by path, also while the file is open",
       known && asked.sample_rate == info.sample_rate && asked.track == info.track &&
           wcscmp(asked.genre, info.genre) == 0 && length == static_cast<uint32_t>(Length()));
  Says("GetFileInfo's stereo flag is set for more than one channel",
       asked.stereo == (ogg_->channels > 1));
  Says("GetFileInfo bears null for every output",
       table().GetFileInfo(KELVO_ON(ogg_), subject_.ogg.c_str(), nullptr, nullptr, nullptr, nullptr,
                           nullptr, nullptr, nullptr) != 0);
}

void Playback::CheckFailingOutput() {
  output_.opens = false;
  const int32_t played = Play();
  Says("Play answers non-zero when the output cannot be opened; the state is stopped",
       played != 0 && table().GetState(KELVO_ON(ogg_)) == KELVO_STOPPED);
  Stop();
  Says("The output is closed then, and no message comes",
       output_.Calls().find("oc") == 0 &&
           TakeMessage(subject_.window, KELVO_MESSAGE_END_OF_PLAYBACK).message == 0);
  output_.opens = true;
  Seek(0);
}

void Playback::CheckWholeFile() {
  output_.Forget();
  output_.SetHold(true);
  const bool played = Play() != 0;
  Says("Play answers non-zero and the state is playing",
       played && table().GetState(KELVO_ON(ogg_)) == KELVO_PLAYING && ogg_->state == KELVO_PLAYING);
  const uint32_t rate = ogg_->sample_rate;
  const uint32_t bytes = rate > 22050 ? 16384 : rate > 11025 ? 8192 : 4096;
  Says("The output is opened with 8 buffers, their size by the rate, channels, rate, 16 bits",
       output_.asked[0] == 8 && output_.asked[1] == bytes && output_.asked[2] == ogg_->channels &&
           output_.asked[3] == rate && output_.asked[4] == 16 && ogg_->buffer_bytes == bytes);
  Says("Play while it plays is refused", Play() == 0);
  output_.SetHold(false);
  const MSG end = AwaitEnd();
  whole_ = output_.Played();
  Says("The end of playback is message 0x0A08 with both parameters 0",
       end.message == KELVO_MESSAGE_END_OF_PLAYBACK && end.wParam == 0 && end.lParam == 0);
  Says("Stop answers 0", Stop() == 0);
  Says("The state is stopped at the end", table().GetState(KELVO_ON(ogg_)) == KELVO_STOPPED);
  Says("The output was opened once, closed at last, and no spare slot was called",
       output_.Calls().front() == 'o' && output_.Calls().find('o', 1) == std::string::npos &&
           output_.Calls().find('c') != std::string::npos &&
           output_.Calls().find('?') == std::string::npos);
  Says("Each buffer has its bytes in both length fields, and Write is told the room left",
       output_.lengths_agree);
  Says("All frames of the file were played",
       whole_.size() == size_t{2} * ogg_->channels * ogg_->total_frames);
}

void Playback::CheckPauseAndStop() {
  Says("After the end SeekMs(0) is accepted", Seek(0) != 0);
  output_.Forget();
  output_.SetHold(true);
  ogg_->thread_priority = 2;
  Play();
  output_.WaitUntilFull();
  Says("The ready event is signalled, the thread has the priority asked for",
       WaitForSingleObject(ogg_->ready_event, 0) == WAIT_OBJECT_0 &&
           GetThreadPriority(ogg_->thread) == THREAD_PRIORITY_ABOVE_NORMAL);
  Says("The plug-in holds neither its lock nor a buffer while it waits for one",
       ogg_->lock.depth == 0 && !ogg_->lock.owner && !ogg_->current);
  ogg_->thread_priority = 3;
  table().TogglePause(KELVO_ON(ogg_));
  Says("TogglePause while it plays pauses the output and the state is paused",
       output_.Calls().back() == 'p' && ogg_->state == KELVO_PAUSED && ogg_->run_output == 0);
  table().TogglePause(KELVO_ON(ogg_));
  Says("TogglePause while it is paused runs the output and the state is playing",
       output_.Calls().back() == 'r' && ogg_->state == KELVO_PLAYING && ogg_->run_output != 0);
  table().TogglePause(KELVO_ON(ogg_));
  Says("Play while it is paused resumes",
       Play() != 0 && output_.Calls().back() == 'r' && ogg_->state == KELVO_PLAYING);
  Position(6, 7);
  Says("GetPositionMs hands its words to PlayedSamples",
       output_.words[0] == 6 && output_.words[1] == 7);
  TakeMessage(subject_.window, KELVO_MESSAGE_END_OF_PLAYBACK);
  Stop();
  Says("Stop ends the thread, closes the output and leaves the state stopped",
       !ogg_->thread && output_.Calls().back() == 'c' && ogg_->state == KELVO_STOPPED);
  Says("No message comes of a Stop",
       TakeMessage(subject_.window, KELVO_MESSAGE_END_OF_PLAYBACK).message == 0);
  table().TogglePause(KELVO_ON(ogg_));
  Says("TogglePause while it is stopped changes nothing", ogg_->state == KELVO_STOPPED);
}

void Playback::CheckSeeking() {
  Says("SeekMs refuses the length", Seek(Length()) == 0);
  Says("SeekMs refuses what lies behind", Seek(Length() + 1) == 0 && Seek(INT32_MAX) == 0);
  Says("SeekMs of a negative position goes to the start", Seek(-5) != 0 && ogg_->seek_base == 0);
  output_.Forget();
  const int32_t half = Length() / 2;
  const auto base = static_cast<uint32_t>(int64_t{ogg_->sample_rate} * half / 1000);
  Says("SeekMs resets the output, and its place is rate * milliseconds / 1000",
       Seek(half) != 0 && output_.Calls() == "x" && ogg_->seek_base == base &&
           ogg_->seek_pending != 0);
  Says("GetPositionMs counts from the place sought", Position(0, 0) == Milliseconds(base));
  output_.SetHold(false);
  Play();
  AwaitEnd();
  const size_t skipped = size_t{2} * ogg_->channels * base;
  Says("From there the samples of the rest are played",
       skipped < whole_.size() && output_.Played() == whole_.substr(skipped));
  Stop();
}

void Playback::CheckOwnTable() {
  Seek(Length() - 1);
  const OwnTable ours(ogg_);
  output_.SetHold(true);
  Play();
  for (int i = 0; i < kWaitMs / 10 && output_.Calls().find("r") == std::string::npos; ++i)
    Sleep(10);
  const int queries = OwnTable::queries();
  table().TogglePause(KELVO_ON(ogg_));
  Play();
  for (int i = 0; i < kWaitMs / 10 && OwnTable::queries() < queries + 4; ++i) Sleep(10);
  Says("The plug-in asks for its state through the object's table, on its thread too",
       OwnTable::queries() >= queries + 4);
  output_.SetHold(false);
  AwaitEnd();
  Stop();
  Says("It changes its state through the table: 2, paused 3, resumed 2, at the end 1",
       OwnTable::states() == "2321");
}

void Playback::CheckDamage() {
  Seek(0);
  output_.SetHold(true);
  Play();
  output_.WaitUntilFull();
  reader_.reads = false;
  output_.SetHold(false);
  Says("A reader that fails ends the playback, with the message",
       AwaitEnd().message == KELVO_MESSAGE_END_OF_PLAYBACK);
  Stop();
  reader_.reads = true;
}

void Playback::CheckClosing() {
  reader_.calls.clear();
  reader_.lets_close = false;
  const int32_t kept = table().Close(KELVO_ON(ogg_), 4, 5);
  Says("Close asks the reader, with its words, and keeps the file when the answer is 0",
       kept == 0 && reader_.calls == "q" && reader_.words[0] == 4 && reader_.words[1] == 5 &&
           ogg_->stream && Length() > 0);
  reader_.lets_close = true;
  Says("Close answers what the reader's close answered", table().Close(KELVO_ON(ogg_), 4, 5) == 7);
  Says("The reader is closed twice", reader_.calls == "qqcc");
  Says("After Close there is no file", !ogg_->stream && Length() == 0 && Play() == 0);
}

}  // namespace

void CheckPlayback(const Subject& subject, Report& report) {
  report.Begin("Ogg Vorbis, playing");
  if (subject.ogg.empty()) return report.LeavesOut("all: no file was given (--ogg FILE)");
  Playback playback(subject, report);
  if (!playback.Opens()) return;
  playback.CheckInformation();
  playback.CheckFailingOutput();
  playback.CheckWholeFile();
  playback.CheckPauseAndStop();
  playback.CheckSeeking();
  playback.CheckOwnTable();
  playback.CheckDamage();
  playback.CheckClosing();
}

}  // namespace velmora::check
