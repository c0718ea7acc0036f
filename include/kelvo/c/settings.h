/* What host and library share in the registry, under HKEY_LOCAL_MACHINE.
 *
 * Generated from tools/contract/settings.txt. */
#ifndef KELVO_C_SETTINGS_H
#define KELVO_C_SETTINGS_H

#define KELVO_SETTINGS_KEY L"SOFTWARE\\Ostrabyte\\Velmora"

/* DWORD: the Windows language id of the interface; 0 and 1033 are the built-in English.
 * Written by the host, read when the library is loaded and at KELVO_FEATURE_SWITCH_LANGUAGE
 * (features.h). */
#define KELVO_LANGUAGE_VALUE L"Language"

/* DWORD: how the catalog groups its files (docs/catalog.md). Kept by the library. */
#define KELVO_GROUPING_VALUE L"CatType"

/* Where the host's installer notes what it installed. */
#define KELVO_INSTALLATION_KEY L"SOFTWARE\\Apps\\Ostrabyte Velmora"

/* Text: the host's folder, in which the library keeps the bookmarks. */
#define KELVO_INSTALL_FOLDER_VALUE L"InstallDir"

#endif
