// Where the library and its host keep their settings, under HKEY_LOCAL_MACHINE.
#pragma once

namespace kelvo {

inline constexpr wchar_t kSettingsKey[] = L"SOFTWARE\\Ostrabyte\\Velmora";
// Where the host's installer notes what it installed; spelled as the installer spells it.
inline constexpr wchar_t kInstallationKey[] = L"\\SOFTWARE\\Apps\\Ostrabyte Velmora";

}  // namespace kelvo
