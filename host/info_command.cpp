#include "host/command.h"
#include "host/input.h"
#include "host/text.h"
#include "host/trouble.h"

namespace velmora {
namespace {

constexpr int32_t kNoWindowsMediaTrack = 100000;

void Line(const wchar_t* name, const std::wstring& value) {
  Print(L"  %-12ls %ls\n", name, value.empty() ? L"-" : value.c_str());
}

std::wstring Number(long number, const wchar_t* unit) {
  return number == 0 ? L"-" : std::to_wstring(number) + unit;
}

bool ShowFile(const Library& library, const std::wstring& path) {
  const Trouble trouble = TroubleOf(library, path);
  const Input input(library, path);
  if (const wchar_t* missing = input.Missing()) {
    PrintError(L"Kelvo.dll does not offer %ls\n", missing);
    return false;
  }
  FileInfo info;
  if (trouble == Trouble::kOtherKind || trouble == Trouble::kFolder ||
      !input.GetInfo(path, &info)) {
    PrintError(L"%ls: %ls\n", path.c_str(), Describe(trouble).c_str());
    return false;
  }
  const kelvo::MediaInfo& format = info.format;
  Print(L"%ls\n", path.c_str());
  Line(L"title", info.title);
  Line(L"artist", info.artist);
  Line(L"album", info.album);
  Line(L"genre", format.genre);
  Line(L"track", Number(format.track == kNoWindowsMediaTrack ? 0 : format.track, L""));
  Line(L"length", MinutesSeconds(info.length_ms).text);
  Line(L"bit rate", Number(static_cast<long>(format.bit_rate), L" kbit/s"));
  Line(L"sample rate", input.SampleRate(format));
  Line(L"stereo", format.stereo ? L"yes" : L"no");
  return true;
}

}  // namespace

int InfoCommand(const Library& library, const Words& files) {
  if (files.empty()) {
    PrintError(L"usage: velmora info FILE...\n");
    return 1;
  }
  int result = 0;
  for (const std::wstring& file : files) {
    if (!ShowFile(library, file)) result = 1;
  }
  return result;
}

}  // namespace velmora
