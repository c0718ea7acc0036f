// The Ogg Vorbis plug-in without a file, and files that it refuses.
#include "host/check/host_objects.h"
#include "host/check/subject.h"

namespace velmora::check {
namespace {

using Ogg = KelvoOggVorbisInput;

void CheckFresh(Ogg* ogg, Report& report) {
  const auto* table = ogg->table;
  report.Says("A fresh plug-in is stopped and has no context, output or reader",
              ogg->state == KELVO_STOPPED && !ogg->host_context && !ogg->output && !ogg->reader);
  report.Says("Its thread is the invalid handle, the thread's priority 3, the stream null",
              ogg->thread == INVALID_HANDLE_VALUE && ogg->thread_priority == 3 && !ogg->stream);
  report.Says("Without a file GetLengthMs is 0", table->GetLengthMs(KELVO_ON(ogg)) == 0);
  report.Says("Without a file GetPositionMs is 0", table->GetPositionMs(KELVO_ON(ogg), 1, 2) == 0);
  report.Says("Without a file SeekMs is refused", table->SeekMs(KELVO_ON(ogg), 0) == 0);
  report.Says("Without a file Play is refused", table->Play(KELVO_ON(ogg)) == 0);
  report.Says("Without a file Stop is 0", table->Stop(KELVO_ON(ogg)) == 0);
  report.Says("Without a file Close is 0", table->Close(KELVO_ON(ogg), 1, 2) == 0);
  table->Reserved0(KELVO_ON(ogg));
  table->TogglePause(KELVO_ON(ogg));
  report.Says("Without a file TogglePause changes nothing", ogg->state == KELVO_STOPPED);
  report.Says("Slots 7 and 8 answer 0",
              table->Reserved7(KELVO_ON(ogg)) == 0 && table->Reserved8(KELVO_ON(ogg)) == 0);
  wchar_t title[KELVO_MAX_TEXT] = L"before";
  report.Says("Without a file GetDisplayTitle empties the buffer and answers 0",
              table->GetDisplayTitle(KELVO_ON(ogg), title) == 0 && title[0] == 0);
  report.Says("GetDisplayTitle without a buffer answers 0",
              table->GetDisplayTitle(KELVO_ON(ogg), nullptr) == 0);
  KelvoMediaInfo info = {};
  info.track = 5;
  table->GetMediaInfo(KELVO_ON(ogg), &info);
  table->GetMediaInfo(KELVO_ON(ogg), nullptr);
  report.Says("Without a file GetMediaInfo writes nothing", info.track == 5);
  bool stored = true;
  for (const uint32_t state : {KELVO_PAUSED, KELVO_PLAYING, KELVO_STOPPED}) {
    table->SetState(KELVO_ON(ogg), state);
    stored &= ogg->state == state && table->GetState(KELVO_ON(ogg)) == state;
  }
  report.Says("SetState stores a state, GetState reads it", stored);
  int window = 0;
  table->SetNotifyWindow(KELVO_ON(ogg), &window);
  report.Says("SetNotifyWindow stores the window", ogg->notify_window == &window);
  table->SetNotifyWindow(KELVO_ON(ogg), nullptr);
}

void CheckRefused(Ogg* ogg, Report& report) {
  const auto opens = [&](const wchar_t* path) { return ogg->table->Open(KELVO_ON(ogg), path, 9); };
  report.Says("Open without a reader is refused", opens(L"\\a.ogg") == 0);
  Reader absent("");
  absent.opens = false;
  ogg->reader = &absent;
  report.Says("Open is refused when the reader cannot open, and the reader is not closed",
              opens(L"\\a.ogg") == 0 && absent.calls == "o");
  report.Says("The reader's open is handed the path and the mode",
              absent.path == L"\\a.ogg" && absent.mode == 9);
  const struct {
    const char* what;
    std::string bytes;
  } kFiles[] = {
      {"an empty file", ""},
      {"a file of other bytes", std::string(5000, 'x')},
      {"a file that begins like Ogg", "OggS" + std::string(5000, '\0')},
  };
  for (const auto& file : kFiles) {
    Reader reader(file.bytes);
    ogg->reader = &reader;
    const bool refused = opens(L"\\a.ogg") == 0;
    report.Says(std::string("Open refuses ") + file.what + ", and closes the reader",
                refused && !ogg->stream && reader.calls.size() > 1 && reader.calls.back() == 'c');
  }
  Reader unread("");
  ogg->reader = &unread;
  const std::wstring endless(KELVO_MAX_TEXT, L'p');
  report.Says("Open refuses a path of 260 characters without asking the reader",
              opens(endless.c_str()) == 0 && unread.calls.empty());
  ogg->reader = nullptr;
}

void CheckFileInfo(Ogg* ogg, const Subject& subject, Report& report) {
  const auto asks = [&](const std::wstring& path) {
    return ogg->table->GetFileInfo(KELVO_ON(ogg), path.c_str(), nullptr, nullptr, nullptr, nullptr,
                                   nullptr, nullptr, nullptr);
  };
  WriteBytes(subject.work + L"other.ogg", "no music");
  report.Says("GetFileInfo answers 0 for an empty path", asks(L"") == 0);
  report.Says("GetFileInfo answers 0 for a file that is not there",
              asks(subject.work + L"none.ogg") == 0);
  report.Says("GetFileInfo answers 0 for a file that is no Ogg Vorbis",
              asks(subject.work + L"other.ogg") == 0);
}

}  // namespace

void CheckInputWithoutFile(const Subject& subject, Report& report) {
  report.Begin("Ogg Vorbis without a file");
  auto* ogg = subject.Get<Ogg>(KELVO_FEATURE_OGG_VORBIS);
  CheckFresh(ogg, report);
  CheckRefused(ogg, report);
  CheckFileInfo(ogg, subject, report);
}

}  // namespace velmora::check
