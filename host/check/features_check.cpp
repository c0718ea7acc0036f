// The export, the version text and the languages.
#include "host/check/subject.h"

namespace velmora::check {
namespace {

constexpr wchar_t kEnglish[] = L"Velmora Feature Pack\rversion 2.51 installed.";
constexpr DWORD kBuiltIn = 1033;
constexpr DWORD kMissing = 0x0C0B;

std::wstring Version(const Subject& subject) {
  const auto* text = subject.Get<const wchar_t>(KELVO_FEATURE_VERSION_TEXT);
  return text ? text : L"";
}

bool Switch(const Subject& subject, OwnRegistry& registry, DWORD language) {
  registry.SetLanguage(language);
  return subject.get_feature(KELVO_FEATURE_SWITCH_LANGUAGE) == nullptr;
}

// The language of a library beside the checked one, or 0.
DWORD LanguageAtHand(const Subject& subject) {
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW((subject.folder + L"kv_mui.????.dll").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return 0;
  FindClose(search);
  return wcstoul(found.cFileName + 7, nullptr, 16);
}

std::wstring FileOf(DWORD language) {
  wchar_t name[32];
  wsprintfW(name, L"kv_mui.%04X.dll", language);
  return name;
}

void CheckLanguages(const Subject& subject, Report& report) {
  OwnRegistry registry;
  bool null = Switch(subject, registry, kBuiltIn);
  report.Says(
      "With language 1033 the version text is \"Velmora Feature Pack\", a carriage return, "
      "\"version 2.51 installed.\"",
      Version(subject) == kEnglish);
  const void* text = subject.get_feature(KELVO_FEATURE_VERSION_TEXT);
  report.Says("The version text is at the same address each time",
              text && text == subject.get_feature(KELVO_FEATURE_VERSION_TEXT));
  const DWORD language = LanguageAtHand(subject);
  if (language == 0) {
    report.LeavesOut("no kv_mui.XXXX.dll lies beside the library: switching to a language");
  } else {
    null = Switch(subject, registry, language) && null;
    const auto loaded = [&] { return GetModuleHandleW(FileOf(language).c_str()) != nullptr; };
    report.Says("GetFeature(7) loads kv_mui.XXXX.dll of the language in the registry", loaded());
    const std::wstring translated = Version(subject);
    report.Says("The version text of a language has the numbers 2 and 51",
                translated.find(L"2.51") != std::wstring::npos);
    registry.Set(KELVO_SETTINGS_KEY, KELVO_LANGUAGE_VALUE, REG_BINARY, "abc", 3);
    subject.get_feature(KELVO_FEATURE_SWITCH_LANGUAGE);
    report.Says("A value that is no DWORD leaves the language as it is",
                loaded() && Version(subject) == translated);
    registry.Remove(KELVO_SETTINGS_KEY, KELVO_LANGUAGE_VALUE);
    subject.get_feature(KELVO_FEATURE_SWITCH_LANGUAGE);
    report.Says("A value that is not there leaves the language as it is", loaded());
    null = Switch(subject, registry, kMissing) && null;
    report.Says("A language without a library is English",
                !loaded() && Version(subject) == kEnglish);
    Switch(subject, registry, language);
    null = Switch(subject, registry, kBuiltIn) && null;
    report.Says("Language 1033 unloads the language's library",
                !loaded() && Version(subject) == kEnglish);
  }
  null = Switch(subject, registry, 0) && null;
  report.Says("Language 0 is English", Version(subject) == kEnglish);
  report.Says("GetFeature(7) is null, always", null);
}

}  // namespace

void CheckFeatures(const Subject& subject, Report& report) {
  report.Begin("GetFeature");
  for (const int32_t id : {1, 3, 4, 5, 8, 9}) {
    void* object = subject.get_feature(id);
    report.Says("GetFeature(" + std::to_string(id) + ") is an object, the same one each time",
                object && object == subject.get_feature(id));
  }
  report.Says("GetFeature(6) is the same each time: an object, or null where there is no control",
              subject.get_feature(6) == subject.get_feature(6));
  bool unknown_are_null = true;
  for (int32_t id = 10; id <= 20; ++id) unknown_are_null &= !subject.get_feature(id);
  for (const int32_t id : {INT32_MIN, -1, 0, 2, 22, INT32_MAX}) {
    unknown_are_null &= !subject.get_feature(id);
  }
  report.Says("GetFeature is null for 0, 2, 10 to 20, 22 and any other number", unknown_are_null);
  CheckLanguages(subject, report);
}

// Unloads the library; the last of all checks.
void CheckReloading(const std::wstring& library, const Subject& subject, Report& report) {
  report.Begin("Loading and unloading");
  FreeLibrary(GetModuleHandleW(library.c_str()));
  report.Says("FreeLibrary unloads the library", !GetModuleHandleW(library.c_str()));
  OwnRegistry registry;
  const DWORD language = LanguageAtHand(subject);
  if (language != 0) registry.SetLanguage(language);
  bool loads = true;
  DWORD handles = 0, later = 0;
  for (int round = 0; round < 10; ++round) {
    if (round == 5) GetProcessHandleCount(GetCurrentProcess(), &handles);  // caches are full
    const HMODULE module = LoadLibraryExW(library.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    Subject again;
    again.get_feature = reinterpret_cast<KelvoGetFeatureFunction>(
        reinterpret_cast<void*>(GetProcAddress(module, "GetFeature")));
    loads &= again.get_feature && again.get_feature(KELVO_FEATURE_OGG_VORBIS);
    if (round == 0 && loads && language != 0) {
      report.Says("The language is read when the library is loaded",
                  GetModuleHandleW(FileOf(language).c_str()) != nullptr);
      Switch(again, registry, kBuiltIn);
    }
    FreeLibrary(module);
    loads &= !GetModuleHandleW(library.c_str());
  }
  GetProcessHandleCount(GetCurrentProcess(), &later);
  report.Says("It can be loaded and unloaded again and again", loads);
  report.Says("Unloading leaves no handles behind", later < handles + 5);
}

}  // namespace velmora::check
