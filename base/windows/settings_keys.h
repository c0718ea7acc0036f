// Where the library and its host keep their settings, under HKEY_LOCAL_MACHINE.
#pragma once

namespace kelvo {

inline constexpr wchar_t kSettingsKey[] = L"SOFTWARE\\Ostrabyte\\Velmora";

}  // namespace kelvo
