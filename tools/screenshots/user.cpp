#include "tools/screenshots/user.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>

namespace screenshots {
namespace {

void GiveUp(const std::string& what) {
  std::fprintf(stderr, "screenshots: %s\n", what.c_str());
  std::exit(1);
}

// What a window manager draws around a window with a caption.
void AddFrame(HWND window, RECT* place) {
  constexpr LONG kCaption = 22, kBorder = 3;
  if (GetEnvironmentVariableW(L"KELVO_WINDOW_MANAGER", nullptr, 0) == 0) return;
  if ((GetWindowLongW(window, GWL_STYLE) & WS_CAPTION) != WS_CAPTION) return;
  RECT client;
  GetClientRect(window, &client);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
  place->left = std::min(place->left, client.left - kBorder);
  place->top = std::min(place->top, client.top - kCaption);
  place->right = std::max(place->right, client.right + kBorder);
  place->bottom = std::max(place->bottom, client.bottom + kBorder);
}

}  // namespace

User::User() : kelvo::test::User(&GiveUp) {}

std::vector<RECT> User::Windows() const {
  std::vector<RECT> all;
  FindAny([&](HWND window) {
    constexpr const wchar_t* kKinds[] = {L"#32770",         L"#32768",      L"ComboLBox",
                                         L"KelvoMenuBar",   L"VelmoraMain", L"VelmoraEqualizer",
                                         L"VelmoraPlaylist"};
    wchar_t name[64] = L"";
    GetClassNameW(window, name, 64);
    if (std::any_of(std::begin(kKinds), std::end(kKinds),
                    [&](const wchar_t* kind) { return lstrcmpW(name, kind) == 0; })) {
      all.emplace_back();
      GetWindowRect(window, &all.back());
      AddFrame(window, &all.back());
    }
    return false;
  });
  return all;
}

void User::OpenByCommand(int id) const {
  const HWND before = Dialog();
  Post(id);
  Wait("another dialog", [&] { return Dialog() && Dialog() != before; });
  Settle();  // a box finds its place after it is shown
}

void User::CloseBy(int id) const {
  const HWND dialog = Dialog();
  PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(id), 0);
  Wait("the dialog's end", [&] { return !IsWindow(dialog) || !IsWindowVisible(dialog); });
  if (Dialog()) Activate();
}

// Without a window manager the display takes the focus from everyone when the window that has it
// goes, some time after the program gave it to the next one.
void User::Activate() const {
  int steady = 0;
  Wait("the foreground", [&] {
    const HWND dialog = Dialog();
    steady = GetForegroundWindow() == dialog ? steady + 1 : 0;
    if (steady == 0) SetForegroundWindow(dialog);
    Sleep(20);
    return steady > 5;
  });
}

void User::ShowPage(int page) const {
  GoTo(page);
  Activate();
}

void User::OpenMenu(int button) const {
  Activate();
  StartTapOnButton(button);
  Wait("a menu", [&] { return Menu() != nullptr; });
}

// A toolbar hears late that the pointer has left it, the caret blinks, and a busy machine paints
// late.
void User::StandStill() const {
  SetCursorPos(0, 0);
  bool hot = true;
  for (int tries = 0; tries < 20 && hot; ++tries) {
    Settle();
    Run([&] {
      HideCaret(nullptr);
      const HWND toolbar = FindWindowExW(MenuBar(), nullptr, TOOLBARCLASSNAMEW, nullptr);
      hot = toolbar && SendMessageW(toolbar, TB_SETHOTITEM, static_cast<WPARAM>(-1), 0) != -1;
      FindAny([](HWND window) {
        RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        return false;
      });
    });
  }
  Settle();
}

void User::OpenContextMenu(HWND control, POINT at) const {
  Activate();
  StartTap(control, at, WM_RBUTTONDOWN, WM_RBUTTONUP);
  Wait("a menu", [&] { return Menu() != nullptr; });
}

// On the handheld a box is in the middle of its small screen, not of the desktop's.
void User::OpenBox(int command) const {
  const HWND below = Dialog();
  OpenByCommand(command);
  RECT screen;
  RECT box;
  GetWindowRect(below, &screen);
  GetWindowRect(Dialog(), &box);
  SetWindowPos(Dialog(), nullptr, (screen.left + screen.right - (box.right - box.left)) / 2,
               (screen.top + screen.bottom - (box.bottom - box.top)) / 2, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace screenshots
