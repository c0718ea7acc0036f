#include "tests/support/user.h"

#include <prsht.h>

#include <memory>

#include "tests/support/wide_text.h"

namespace kelvo::test {
namespace {

constexpr UINT kRunMessage = WM_APP + 1;
constexpr UINT kStartMessage = WM_APP + 2;
constexpr wchar_t kHands[] = L"KelvoTestHands";

using Action = std::function<void()>;

LRESULT CALLBACK HandsProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == kRunMessage) (*reinterpret_cast<const Action*>(lparam))();
  if (message == kStartMessage) {
    const std::unique_ptr<Action> action(reinterpret_cast<Action*>(lparam));
    (*action)();
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

bool IsKind(HWND window, const wchar_t* kind) {
  wchar_t name[64] = L"";
  GetClassNameW(window, name, 64);
  return lstrcmpW(name, kind) == 0;
}

struct Search {
  const std::function<bool(HWND)>& fits;
  HWND found = nullptr;
};

BOOL CALLBACK Look(HWND window, LPARAM parameter) {
  Search& search = *reinterpret_cast<Search*>(parameter);
  if (!IsWindowVisible(window) || !search.fits(window)) return TRUE;
  search.found = window;
  return FALSE;
}

template <class Item>
LPARAM Parameter(Item* item) {
  return reinterpret_cast<LPARAM>(item);
}

}  // namespace

bool WaitFor(const std::function<bool()>& done) {
  for (const DWORD start = GetTickCount(); GetTickCount() - start < 30000; Sleep(10)) {
    if (done()) return true;
  }
  return false;
}

User::User(Complain complain) : complain_(complain), thread_(GetCurrentThreadId()) {
  WNDCLASSW type = {};
  type.lpfnWndProc = &HandsProcedure;
  type.lpszClassName = kHands;
  RegisterClassW(&type);
  hands_ = CreateWindowExW(0, kHands, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
}

User::~User() {
  DestroyWindow(hands_);
}

void User::Run(const Action& action) const {
  SendMessageW(hands_, kRunMessage, 0, Parameter(&action));
}

void User::Start(Action action) const {
  PostMessageW(hands_, kStartMessage, 0, Parameter(new Action(std::move(action))));
}

void User::Settle() const {
  for (int i = 0; i < 3; ++i) {
    const HANDLE reached = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    Start([reached] { SetEvent(reached); });
    if (WaitForSingleObject(reached, 30000) != WAIT_OBJECT_0) complain_("the thread is deaf");
    CloseHandle(reached);
  }
}

bool User::Wait(const std::string& what, const std::function<bool()>& done) const {
  if (WaitFor(done)) return true;
  complain_("waited in vain: " + what);
  return false;
}

HWND User::FindAny(const std::function<bool(HWND)>& fits) const {
  Search search = {fits};
  EnumThreadWindows(thread_, &Look, Parameter(&search));
  return search.found;
}

HWND User::Find(const wchar_t* caption, const wchar_t* kind, bool enabled) const {
  return FindAny([&](HWND window) {
    return IsKind(window, kind) && (!caption || Text(window) == Utf8(caption)) &&
           (!enabled || IsWindowEnabled(window));
  });
}

HWND User::Dialog() const {
  return FindAny([](HWND window) {
    return (IsKind(window, L"#32770") || IsKind(window, L"VelmoraMain")) && IsWindowEnabled(window);
  });
}

HWND User::WaitForWindow(const wchar_t* caption) const {
  HWND found = nullptr;
  Wait(Utf8(caption), [&] { return (found = Window(caption)) != nullptr; });
  return found;
}

HWND User::NextDialog(HWND below) const {
  HWND top = nullptr;
  Wait("what follows", [&] { return (top = Dialog()) != nullptr && top != below; });
  return IsWindow(below) ? top : nullptr;
}

HWND User::Page(HWND dialog) const {
  if (!dialog) dialog = Dialog();
  const auto page = reinterpret_cast<HWND>(SendMessageW(dialog, PSM_GETCURRENTPAGEHWND, 0, 0));
  return page && IsChild(dialog, page) ? page : dialog;
}

HWND User::MenuBar() const {
  const HWND dialog = Dialog();
  return FindAny([&](HWND window) {
    return IsKind(window, L"KelvoMenuBar") && GetWindow(window, GW_OWNER) == dialog;
  });
}

std::string User::Text(HWND window) {
  wchar_t text[300] = L"";
  GetWindowTextW(window, text, 300);
  return Utf8(text);
}

std::string User::BoxText(HWND box) {
  std::string all;
  HWND label = nullptr;
  while ((label = FindWindowExW(box, label, L"Static", nullptr)) != nullptr) all += Text(label);
  return all;
}

void User::Do(int command) const {
  SendMessageW(Page(), WM_COMMAND, static_cast<WPARAM>(command), 0);
}

void User::Post(int command) const {
  PostMessageW(Page(), WM_COMMAND, static_cast<WPARAM>(command), 0);
}

void User::Answer(HWND dialog, int answer) const {
  SendMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(answer), 0);
  Wait("a dialog's end", [&] { return !IsWindow(dialog); });
  Settle();
}

void User::Done() const {
  PostMessageW(Dialog(), WM_SYSCOMMAND, SC_CLOSE, 0);
}

void User::GoTo(int page) const {
  SendMessageW(Dialog(), PSM_SETCURSEL, static_cast<WPARAM>(page), 0);
}

bool User::Enabled(int command) const {
  return SendMessageW(MenuBar(), TB_ISBUTTONENABLED, static_cast<WPARAM>(command), 0) != 0;
}

void User::Key(HWND window, WPARAM key) const {
  PostMessageW(window, WM_KEYDOWN, key, 0);
  PostMessageW(window, WM_KEYUP, key, 0);
}

}  // namespace kelvo::test
