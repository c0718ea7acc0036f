#include <filesystem>

#include "host/check/subject.h"
#include "host/command.h"
#include "host/wave_output.h"

namespace velmora {
namespace {

std::wstring FullPath(const std::wstring& path) {
  wchar_t full[MAX_PATH] = L"";
  GetFullPathNameW(path.c_str(), MAX_PATH, full, nullptr);
  return full;
}

bool ParseWords(const Words& words, std::wstring* library, check::Subject* subject) {
  for (size_t i = 0; i < words.size(); ++i) {
    const bool has_value = i + 1 < words.size();
    if (words[i] == L"--windows") {
      subject->windows = true;
    } else if (words[i] == L"--ogg" && has_value) {
      subject->ogg = FullPath(words[++i]);
    } else if (words[i] == L"--wma" && has_value) {
      subject->wma = FullPath(words[++i]);
    } else if (library->empty() && words[i].compare(0, 2, L"--") != 0) {
      *library = FullPath(words[i]);
    } else {
      return false;
    }
  }
  return !library->empty();
}

bool Exists(const std::wstring& path) {
  return path.empty() || GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// A folder for the files of the checks, which goes with this.
class WorkFolder {
 public:
  WorkFolder() {
    wchar_t temporary[MAX_PATH];
    GetTempPathW(MAX_PATH, temporary);
    path_ = std::wstring(temporary) + L"kelvo-check-" + std::to_wstring(GetCurrentProcessId());
    CreateDirectoryW(path_.c_str(), nullptr);
  }
  ~WorkFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;

  std::wstring path() const { return path_ + L"\\"; }

 private:
  std::wstring path_;
};

// A fresh plug-in first; Windows Media after the effects, through which its sound runs.
constexpr struct {
  int32_t id;
  void (*check)(const check::Subject& subject, check::Report& report);
} kFeatures[] = {
    {KELVO_FEATURE_OGG_VORBIS, check::CheckInputWithoutFile},
    {KELVO_FEATURE_OGG_VORBIS, check::CheckPlayback},
    {KELVO_FEATURE_EFFECTS, check::CheckEffects},
    {KELVO_FEATURE_WMA, check::CheckWma},
    {KELVO_FEATURE_EQUALIZER_PRESETS, check::CheckPresets},
    {KELVO_FEATURE_BOOKMARKS, check::CheckBookmarks},
    {KELVO_FEATURE_SKIN_READER, check::CheckSkins},
    {KELVO_FEATURE_CATALOG, check::CheckCatalog},
};

}  // namespace

int CheckCommand(const Words& words) {
  std::wstring library;
  check::Subject subject;
  if (!ParseWords(words, &library, &subject)) {
    PrintError(L"usage: velmora check [--windows] [--ogg FILE] [--wma FILE] DLL\n");
    return 2;
  }
  for (const std::wstring& path : {library, subject.ogg, subject.wma}) {
    if (Exists(path)) continue;
    PrintError(L"%ls: no such file\n", path.c_str());
    return 2;
  }
  SendSoundNowhere();
  const HMODULE module = LoadLibraryExW(library.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  subject.get_feature = reinterpret_cast<KelvoGetFeatureFunction>(
      reinterpret_cast<void*>(GetProcAddress(module, "GetFeature")));
  if (!subject.get_feature) {
    PrintError(module ? L"%ls: it has no export GetFeature\n"
                      : L"%ls: it cannot be loaded; a DLL that it needs may not lie beside it\n",
               library.c_str());
    return 2;
  }
  const WorkFolder work;
  subject.folder = library.substr(0, library.rfind(L'\\') + 1);
  subject.work = work.path();
  subject.window =
      CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 240, 320, nullptr, nullptr, nullptr, nullptr);
  check::Report report;
  report.Guard();
  check::CheckFeatures(subject, report);
  for (const auto& feature : kFeatures) {
    if (subject.get_feature(feature.id) || feature.id == KELVO_FEATURE_WMA)
      feature.check(subject, report);
  }
  check::CheckReloading(library, subject, report);
  DestroyWindow(subject.window);
  return report.End();
}

}  // namespace velmora
