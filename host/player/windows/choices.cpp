#include "host/player/windows/choices.h"

#include <commdlg.h>
#include <objbase.h>
#include <shlobj.h>

#include <utility>

#include "host/texts.h"

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

// "Skins (*.zip)" and what it means; the dialog's end mark is that of the text.
std::wstring Filter(int kind, const std::wstring& patterns) {
  return Text(kind) + L" (" + patterns + L")" + L'\0' + patterns + L'\0';
}

// The message box that is about to open, and what it is to open over: one at a time.
HHOOK opening = nullptr;
HWND opening_over = nullptr;

LRESULT CALLBACK PlaceMessage(int code, WPARAM wparam, LPARAM lparam) {
  if (code != HCBT_ACTIVATE) return CallNextHookEx(nullptr, code, wparam, lparam);
  UnhookWindowsHookEx(opening);
  PlaceOver(reinterpret_cast<HWND>(wparam), opening_over);
  return 0;
}

// What all questions for files have in common. It holds the texts that the system's record points
// to.
class FileQuestion {
 public:
  FileQuestion(HWND parent, int caption, std::wstring filter)
      : parent_(parent), caption_(Text(caption)), filter_(std::move(filter)) {}
  OPENFILENAMEW Fill(wchar_t* path, DWORD capacity) const {
    OPENFILENAMEW ask = {};
    ask.lStructSize = sizeof ask;
    ask.hwndOwner = parent_;
    ask.lpstrFilter = filter_.c_str();
    ask.lpstrFile = path;
    ask.nMaxFile = capacity;
    ask.lpstrTitle = caption_.c_str();
    ask.Flags = OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    return ask;
  }

 private:
  const HWND parent_;
  const std::wstring caption_, filter_;
};

}  // namespace

void PlaceOver(HWND dialog, HWND parent) {
  RECT place, over;
  GetWindowRect(dialog, &place);
  GetWindowRect(parent, &over);
  MONITORINFO screen = {};
  screen.cbSize = sizeof screen;
  GetMonitorInfoW(MonitorFromRect(&over, MONITOR_DEFAULTTONEAREST), &screen);
  const LONG width = place.right - place.left, height = place.bottom - place.top;
  const RECT& area = screen.rcWork;
  SetWindowPos(dialog, nullptr,
               Clamp((over.left + over.right - width) / 2, area.left, area.right - width),
               Clamp((over.top + over.bottom - height) / 2, area.top, area.bottom - height), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

int ShowMessage(HWND parent, const std::wstring& text, const std::wstring& caption, UINT flags) {
  opening_over = parent;
  opening = SetWindowsHookExW(WH_CBT, PlaceMessage, nullptr, GetCurrentThreadId());
  return MessageBoxW(parent, text.c_str(), caption.c_str(), flags);
}

std::vector<std::wstring> AskForMedia(HWND parent) {
  std::vector<wchar_t> text(kManyPaths, 0);
  const FileQuestion question(
      parent, TEXT_CAPTION_OPEN,
      Filter(TEXT_KIND_PLAYABLE, L"*.ogg;*.wma;*.m3u;*.pls;*.asx") + Filter(TEXT_KIND_ALL, L"*.*"));
  OPENFILENAMEW ask = question.Fill(text.data(), kManyPaths);
  ask.Flags |= OFN_ALLOWMULTISELECT | OFN_EXPLORER | OFN_FILEMUSTEXIST;
  if (!GetOpenFileNameW(&ask)) return {};
  return SplitPaths(text.data());
}

std::wstring AskForSkin(HWND parent) {
  wchar_t path[MAX_PATH] = L"";
  const FileQuestion question(parent, TEXT_CAPTION_SKIN,
                              Filter(TEXT_KIND_SKINS, L"*.zip") + Filter(TEXT_KIND_ALL, L"*.*"));
  OPENFILENAMEW ask = question.Fill(path, MAX_PATH);
  ask.Flags |= OFN_FILEMUSTEXIST;
  return GetOpenFileNameW(&ask) ? path : L"";
}

std::wstring AskWhereToSaveList(HWND parent) {
  wchar_t path[MAX_PATH] = L"";
  const FileQuestion question(parent, TEXT_CAPTION_SAVE, Filter(TEXT_KIND_PLAYLISTS, L"*.m3u"));
  OPENFILENAMEW ask = question.Fill(path, MAX_PATH);
  ask.lpstrDefExt = L"m3u";
  ask.Flags |= OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST;
  return GetSaveFileNameW(&ask) ? path : L"";
}

std::wstring AskForFolder(HWND parent, const std::wstring& question) {
  BROWSEINFOW ask = {};
  ask.hwndOwner = parent;
  ask.lpszTitle = question.c_str();
  ask.ulFlags = BIF_RETURNONLYFSDIRS;
  PIDLIST_ABSOLUTE chosen = SHBrowseForFolderW(&ask);
  if (!chosen) return L"";
  wchar_t path[MAX_PATH] = L"";
  SHGetPathFromIDListW(chosen, path);
  CoTaskMemFree(chosen);
  return path;
}

Menu& Menu::Item(const std::wstring& text, int command, bool checked, bool enabled) {
  const UINT flags = MF_STRING | (checked ? MF_CHECKED : 0) | (enabled ? 0 : MF_GRAYED);
  AppendMenuW(menu_, flags, static_cast<UINT_PTR>(command), text.c_str());
  return *this;
}

Menu& Menu::Submenu(const std::wstring& text, Menu sub) {
  if (AppendMenuW(menu_, MF_POPUP, reinterpret_cast<UINT_PTR>(sub.menu_), text.c_str())) {
    sub.menu_ = nullptr;  // its owner is this menu now
  }
  return *this;
}

Menu& Menu::Separator() {
  AppendMenuW(menu_, MF_SEPARATOR, 0, nullptr);
  return *this;
}

void Menu::Track(HWND window, Point at) const {
  TrackPopupMenu(menu_, TPM_LEFTALIGN | TPM_RIGHTBUTTON, at.x, at.y, 0, window, nullptr);
}

std::wstring AsMenuText(const std::wstring& name) {
  std::wstring text;
  for (wchar_t c : name) {
    if (c == L'\t') c = L' ';
    text += c;
    if (c == L'&') text += c;
  }
  return text;
}

}  // namespace velmora
