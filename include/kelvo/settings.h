// What host and library share in the registry, under HKEY_LOCAL_MACHINE.
//
// Generated from tools/contract/settings.txt.
#pragma once

namespace kelvo {

inline constexpr wchar_t kSettingsKey[] = L"SOFTWARE\\Ostrabyte\\Velmora";

// DWORD: the Windows language id of the interface; 0 and 1033 are the built-in English. Written by
// the host, read when the library is loaded and at kFeatureSwitchLanguage (features.h).
inline constexpr wchar_t kLanguageValue[] = L"Language";

// DWORD: how the catalog groups its files (docs/catalog.md). Kept by the library.
inline constexpr wchar_t kGroupingValue[] = L"CatType";

// Where the host's installer notes what it installed.
inline constexpr wchar_t kInstallationKey[] = L"SOFTWARE\\Apps\\Ostrabyte Velmora";

// Text: the host's folder, in which the library keeps the bookmarks.
inline constexpr wchar_t kInstallFolderValue[] = L"InstallDir";

}  // namespace kelvo
