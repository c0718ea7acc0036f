#include "host/player/settings.h"

#include <kelvo/settings.h>
#include <wchar.h>

#include <algorithm>
#include <string>

#include "host/system.h"

namespace velmora {
namespace {

constexpr wchar_t kPrefix[] = L"kv_mui.";
constexpr size_t kPrefixLength = 7;
constexpr size_t kDigits = 4;

// "kv_mui.0407.dll"; 0 for other names.
LANGID LanguageOf(const std::wstring& name) {
  if (name.size() != kPrefixLength + kDigits + 4) return 0;
  const std::wstring digits = name.substr(kPrefixLength, kDigits);
  if (digits.find_first_not_of(L"0123456789ABCDEFabcdef") != std::wstring::npos) return 0;
  return static_cast<LANGID>(wcstoul(digits.c_str(), nullptr, 16));
}

int CALLBACK OnFont(const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM found) {
  *reinterpret_cast<bool*>(found) = true;
  return 0;
}

bool HasName(LANGID language) {
  return GetLocaleInfoW(MAKELCID(language, SORT_DEFAULT), LOCALE_SNATIVELANGUAGENAME, nullptr, 0) >
         0;
}

}  // namespace

std::vector<LANGID> FindLanguages() {
  std::vector<LANGID> languages = {kEnglish};
  WIN32_FIND_DATAW found;
  const std::wstring pattern = ProgramFolder() + L"\\" + kPrefix + L"*.dll";
  const HANDLE search = FindFirstFileW(pattern.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return languages;
  do {
    const LANGID language = LanguageOf(found.cFileName);
    if (language != 0 && language != kEnglish && HasName(language)) languages.push_back(language);
  } while (FindNextFileW(search, &found));
  FindClose(search);
  std::sort(languages.begin() + 1, languages.end());
  return languages;
}

LANGID ChosenLanguage() {
  DWORD language = 0;
  DWORD bytes = sizeof(language);
  if (RegGetValueW(HKEY_LOCAL_MACHINE, kelvo::kSettingsKey, kelvo::kLanguageValue, RRF_RT_REG_DWORD,
                   nullptr, &language, &bytes) != ERROR_SUCCESS ||
      language == 0) {
    return kEnglish;
  }
  return static_cast<LANGID>(language);
}

bool ChooseLanguage(const Library& library, LANGID language) {
  const DWORD value = language;
  HKEY key;
  if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, kelvo::kSettingsKey, 0, nullptr, 0, KEY_SET_VALUE,
                      nullptr, &key, nullptr) != ERROR_SUCCESS) {
    return false;
  }
  const LSTATUS stored = RegSetValueExW(key, kelvo::kLanguageValue, 0, REG_DWORD,
                                        reinterpret_cast<const BYTE*>(&value), sizeof(value));
  RegCloseKey(key);
  if (stored != ERROR_SUCCESS) return false;
  library.Get<void>(kelvo::kFeatureSwitchLanguage);
  return true;
}

bool HasLettersOf(LANGID language) {
  DWORD code_page = 0;
  CHARSETINFO letters = {};
  GetLocaleInfoW(MAKELCID(language, SORT_DEFAULT),
                 LOCALE_IDEFAULTANSICODEPAGE | LOCALE_RETURN_NUMBER,
                 reinterpret_cast<wchar_t*>(&code_page), sizeof code_page / sizeof(wchar_t));
  if (!TranslateCharsetInfo(reinterpret_cast<DWORD*>(static_cast<DWORD_PTR>(code_page)), &letters,
                            TCI_SRCCODEPAGE)) {
    return false;
  }
  LOGFONTW wanted = {};
  wanted.lfCharSet = static_cast<BYTE>(letters.ciCharset);
  bool found = false;
  const HDC dc = GetDC(nullptr);
  EnumFontFamiliesExW(dc, &wanted, OnFont, reinterpret_cast<LPARAM>(&found), 0);
  ReleaseDC(nullptr, dc);
  return found;
}

}  // namespace velmora
