// The device's directory entry differs from the desktop's: one reserved word less before the name,
// and no short name behind it.
#pragma once

#define _WIN32_FIND_DATAW DesktopFindDataTag
#define WIN32_FIND_DATAW DesktopFindData
#define PWIN32_FIND_DATAW DesktopFindDataPointer
#define LPWIN32_FIND_DATAW DesktopFindDataLongPointer
#include_next <minwinbase.h>
#undef _WIN32_FIND_DATAW
#undef WIN32_FIND_DATAW
#undef PWIN32_FIND_DATAW
#undef LPWIN32_FIND_DATAW

typedef struct _WIN32_FIND_DATAW {
  DWORD dwFileAttributes;
  FILETIME ftCreationTime;
  FILETIME ftLastAccessTime;
  FILETIME ftLastWriteTime;
  DWORD nFileSizeHigh;
  DWORD nFileSizeLow;
  DWORD dwOID;
  WCHAR cFileName[MAX_PATH];
} WIN32_FIND_DATAW, *PWIN32_FIND_DATAW, *LPWIN32_FIND_DATAW;
#define WIN32_FIND_DATA WIN32_FIND_DATAW
