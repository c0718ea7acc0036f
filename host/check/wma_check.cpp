// The Windows Media plug-in: what it reads in a file's header, which the check writes itself, what
// it refuses, and playing where a file is given.
#include <string.h>

#include "host/check/subject.h"

namespace velmora::check {
namespace {

using Wma = KelvoWmaInput;

// The parts of a header, as they lie in a file.
constexpr char kHeader[] = "\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C";
constexpr char kContent[] = "\x33\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C";
constexpr char kExtended[] = "\x40\xA4\xD0\xD2\x07\xE3\xD2\x11\x97\xF0\x00\xA0\xC9\x5E\xA8\x50";
constexpr char kCodecs[] = "\x40\x52\xD1\x86\x1D\x31\xD0\x11\xA3\xA4\x00\xA0\xC9\x03\x48\xF6";
constexpr char kProperties[] = "\xA1\xDC\xAB\x8C\x47\xA9\xCF\x11\x8E\xE4\x00\xC0\x0C\x20\x53\x65";

std::string Number(uint64_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i));
  return text;
}

// A text with its terminator, behind its length in `unit` bytes.
std::string Counted(const std::wstring& text, size_t unit = 1) {
  const std::string bytes = BytesOf(text + L'\0');
  return Number(bytes.size() / unit, 2) + bytes;
}

std::string Part(const char (&guid)[17], const std::string& body) {
  return std::string(guid, 16) + Number(body.size() + 24, 8) + body;
}

std::string File(const std::string& parts, uint32_t count) {
  return std::string(kHeader, 16) + Number(parts.size() + 30, 8) + Number(count, 4) + "\1\2" +
         parts;
}

std::string Content(const std::wstring& title, const std::wstring& author) {
  const std::string texts = BytesOf(title + L'\0') + BytesOf(author + L'\0');
  return Part(kContent, Number(title.size() * 2 + 2, 2) + Number(author.size() * 2 + 2, 2) +
                            Number(0, 6) + texts);
}

std::string Everything() {
  const std::string extended = Number(3, 2) + Counted(L"WM/Genre") + Number(0, 2) +
                               Counted(L"Folk") + Counted(L"WM/AlbumTitle") + Number(0, 2) +
                               Counted(L"Album") + Counted(L"wm/tracknumber") + Number(3, 2) +
                               Number(4, 2) + Number(5, 4);
  const std::string codecs = std::string(16, '\0') + Number(1, 4) + Number(2, 2) +
                             Counted(L"Codec", 2) + Counted(L"96 kbps, 44 kHz, stereo", 2) +
                             Number(0, 2);
  // 12 seconds, 3 of them before the first sound.
  const std::string properties = std::string(40, '\0') + Number(120000000, 8) + Number(0, 8) +
                                 Number(3000, 8) + std::string(16, '\0');
  return File(Part(kProperties, properties) + Content(L"Title", L"Author") +
                  Part(kExtended, extended) + Part(kCodecs, codecs),
              4);
}

// What GetFileInfo writes.
struct Answer {
  int32_t result;
  wchar_t display[KELVO_MAX_TEXT], album[KELVO_MAX_TEXT], artist[KELVO_MAX_TEXT],
      title[KELVO_MAX_TEXT];
  KelvoMediaInfo info;
  uint32_t length, sdk;
};

Answer Ask(Wma* wma, const std::wstring& path) {
  Answer answer;
  memset(&answer, 0x55, sizeof(answer));
  answer.result = wma->table->GetFileInfo(KELVO_ON(wma), path.c_str(), answer.display, answer.album,
                                          &answer.info, &answer.length, &answer.sdk, answer.artist,
                                          answer.title);
  return answer;
}

void CheckHeaders(Wma* wma, const Subject& subject, Report& report) {
  const std::wstring full = subject.work + L"full.wma", bare = subject.work + L"a.b.wma",
                     other = subject.work + L"other.wma";
  WriteBytes(full, Everything());
  WriteBytes(bare, File("", 0));
  WriteBytes(other, std::string(4000, 'x'));
  Answer answer = Ask(wma, full);
  report.Says("GetFileInfo reads title, author and album, and shows \"author - title\"",
              answer.result == 1 && wcscmp(answer.title, L"Title") == 0 &&
                  wcscmp(answer.artist, L"Author") == 0 && wcscmp(answer.album, L"Album") == 0 &&
                  wcscmp(answer.display, L"Author - Title") == 0);
  report.Says("The record has genre, kHz, kbit/s, stereo and track",
              wcscmp(answer.info.genre, L"Folk") == 0 && answer.info.sample_rate == 44 &&
                  answer.info.bit_rate == 96 && answer.info.stereo == 1 && answer.info.track == 5);
  report.Says("The length is the play duration without the preroll", answer.length == 9000);
  answer = Ask(wma, bare);
  report.Says("Without title and author the file's name is shown, up to its last point",
              answer.result == 1 && wcscmp(answer.display, L"a.b") == 0);
  report.Says("Without a track number the track is 100000; the rest is empty and 0",
              answer.info.track == 100000 && answer.info.sample_rate == 0 && answer.length == 0 &&
                  answer.sdk == 0 && !answer.album[0] && !answer.title[0]);
  answer = Ask(wma, other);
  report.Says("What is no Windows Media file gives 0, and empty outputs",
              answer.result == 0 && !answer.display[0] && !answer.artist[0] && answer.length == 0);
  report.Says("So does a file that is not there", Ask(wma, subject.work + L"none").result == 0);
  report.Says("GetFileInfo bears null for every output",
              wma->table->GetFileInfo(KELVO_ON(wma), full.c_str(), nullptr, nullptr, nullptr,
                                      nullptr, nullptr, nullptr, nullptr) == 1);
  report.Says("Open refuses what is no Windows Media file",
              wma->table->Open(KELVO_ON(wma), other.c_str(), 0) == 0);
  const std::wstring foreign = subject.work + L"\x0416\x3042\x05D0.wma";
  WriteBytes(foreign, Everything());
  BOOL replaced = FALSE;
  if (GetACP() != CP_UTF8)
    WideCharToMultiByte(CP_ACP, 0, foreign.c_str(), -1, nullptr, 0, "?", &replaced);
  if (!replaced) {
    report.LeavesOut("this code page has every letter: refusing the names that it lacks");
  } else {
    report.Says("Open refuses a name that the code page lacks, in silence without an owner window",
                wma->table->Open(KELVO_ON(wma), foreign.c_str(), 0) == 0);
  }
}

void CheckIdle(Wma* wma, Report& report) {
  int16_t samples[KELVO_VISUALISATION_SAMPLES];
  memset(samples, 0x55, sizeof(samples));
  const int32_t first = wma->table->GetVisualisation(KELVO_ON(wma), samples);
  bool silent = true;
  for (const int16_t sample : samples) silent &= sample == 0;
  report.Says("The first samples for a picture, before any sound, are silence",
              first == 1 && silent);
  memset(samples, 0x55, sizeof(samples));
  report.Says("A read behind the block's end answers 0 and writes nothing",
              wma->table->GetVisualisation(KELVO_ON(wma), samples) == 0 && samples[0] == 0x5555);
  report.Says("Without a buffer the answer is 0",
              wma->table->GetVisualisation(KELVO_ON(wma), nullptr) == 0);
  report.Says("TogglePause while it is stopped answers the state",
              wma->table->TogglePause(KELVO_ON(wma)) == KELVO_STOPPED);
  wma->table->SetState(KELVO_ON(wma), KELVO_PAUSED);
  report.Says("SetState is stored, but does not show in GetState",
              wma->state == KELVO_PAUSED && wma->table->GetState(KELVO_ON(wma)) == KELVO_STOPPED);
  wma->table->SetState(KELVO_ON(wma), KELVO_STOPPED);
  report.Says("Slots 7 and 8 answer 0", wma->table->Reserved7(KELVO_ON(wma)) == 0 &&
                                            wma->table->Reserved8(KELVO_ON(wma)) == 0);
}

void CheckPlaying(Wma* wma, const Subject& subject, Report& report) {
  if (subject.wma.empty()) return report.LeavesOut("playing: no file was given (--wma FILE)");
  const auto* table = wma->table;
  const auto state = [&] { return table->GetState(KELVO_ON(wma)); };
  report.Says("Open accepts a Windows Media file, and the state is stopped",
              table->Open(KELVO_ON(wma), subject.wma.c_str(), 0) != 0 && state() == KELVO_STOPPED);
  wchar_t title[KELVO_MAX_TEXT] = L"";
  KelvoMediaInfo info = {};
  table->GetMediaInfo(KELVO_ON(wma), &info);
  const KelvoMediaInfo asked = Ask(wma, subject.wma).info;
  report.Says("GetDisplayTitle and GetMediaInfo read the open file",
              table->GetDisplayTitle(KELVO_ON(wma), title) != 0 && title[0] &&
                  memcmp(&info, &asked, sizeof(info)) == 0);
  report.Says("GetLengthMs is the control's", table->GetLengthMs(KELVO_ON(wma)) > 0);
  table->SetOwnerWindow(KELVO_ON(wma), subject.window);
  report.Says("Play answers 1 and the state is playing",
              table->Play(KELVO_ON(wma)) == 1 && state() == KELVO_PLAYING);
  const auto position = [&] { return table->GetPositionMs(KELVO_ON(wma), 0, 0); };
  for (int i = 0; i < kWaitMs / 10 && position() < 300; ++i) Sleep(10);
  const int32_t paused_at = position();
  table->TogglePause(KELVO_ON(wma));
  report.Says("TogglePause while it plays makes the state paused", state() == KELVO_PAUSED);
  report.Says("TogglePause while it is paused plays, and answers what Play does",
              table->TogglePause(KELVO_ON(wma)) == 1 && state() == KELVO_PLAYING);
  report.Says("It goes on from where it was paused",
              paused_at >= 300 && position() >= paused_at - 100);
  report.Says("SeekMs answers 1", table->SeekMs(KELVO_ON(wma), 0) == 1);
  table->Stop(KELVO_ON(wma));
  report.Says("Stop makes the state stopped", state() == KELVO_STOPPED);
  table->Play(KELVO_ON(wma));
  table->Close(KELVO_ON(wma), 0, 0);
  report.Says("Close only stops: the file can be played again",
              state() == KELVO_STOPPED && table->Play(KELVO_ON(wma)) == 1);
  table->Stop(KELVO_ON(wma));
  table->SetOwnerWindow(KELVO_ON(wma), nullptr);
}

}  // namespace

void CheckWma(const Subject& subject, Report& report) {
  report.Begin("Windows Media");
  auto* wma = subject.Get<Wma>(KELVO_FEATURE_WMA);
  if (!wma) return report.LeavesOut("all: the library has no player control here");
  CheckIdle(wma, report);
  CheckHeaders(wma, subject, report);
  CheckPlaying(wma, subject, report);
}

}  // namespace velmora::check
