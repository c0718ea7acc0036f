#include "host/player/windows/file_dialogs.h"

#include <commdlg.h>
#include <objbase.h>
#include <shlobj.h>

namespace velmora {
namespace {

constexpr DWORD kManyPaths = 32768;

// What the dialog returns for several files: their folder, then their names, each ended by NUL.
std::vector<std::wstring> SplitPaths(const wchar_t* text) {
  const std::wstring first = text;
  std::vector<std::wstring> paths;
  for (text += first.size() + 1; *text; text += wcslen(text) + 1) {
    paths.push_back(first + (first.back() == L'\\' ? L"" : L"\\") + text);
  }
  if (paths.empty()) paths.push_back(first);
  return paths;
}

}  // namespace

std::vector<std::wstring> AskForMedia(HWND parent) {
  std::vector<wchar_t> text(kManyPaths, 0);
  OPENFILENAMEW ask = {};
  ask.lStructSize = sizeof ask;
  ask.hwndOwner = parent;
  ask.lpstrFilter = L"Music (*.ogg, *.wma)\0*.ogg;*.wma\0All files\0*.*\0";
  ask.lpstrFile = text.data();
  ask.nMaxFile = kManyPaths;
  ask.lpstrTitle = L"Open files";
  ask.Flags =
      OFN_ALLOWMULTISELECT | OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  if (!GetOpenFileNameW(&ask)) return {};
  return SplitPaths(text.data());
}

std::wstring AskForSkin(HWND parent) {
  wchar_t path[MAX_PATH] = L"";
  OPENFILENAMEW ask = {};
  ask.lStructSize = sizeof ask;
  ask.hwndOwner = parent;
  ask.lpstrFilter = L"Skins (*.zip)\0*.zip\0All files\0*.*\0";
  ask.lpstrFile = path;
  ask.nMaxFile = MAX_PATH;
  ask.lpstrTitle = L"Choose a skin";
  ask.Flags = OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  return GetOpenFileNameW(&ask) ? path : L"";
}

std::wstring AskForFolder(HWND parent, const wchar_t* question) {
  BROWSEINFOW ask = {};
  ask.hwndOwner = parent;
  ask.lpszTitle = question;
  ask.ulFlags = BIF_RETURNONLYFSDIRS;
  PIDLIST_ABSOLUTE chosen = SHBrowseForFolderW(&ask);
  if (!chosen) return L"";
  wchar_t path[MAX_PATH] = L"";
  SHGetPathFromIDListW(chosen, path);
  CoTaskMemFree(chosen);
  return path;
}

}  // namespace velmora
