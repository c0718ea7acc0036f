// The library beside which a language library lies, as its user sees it.
#include <windows.h>

#include <atomic>
#include <thread>

#include "base/windows/pocketpc.h"
#include "res/resource_ids.h"
#include "tests/hostile/asker.h"
#include "tests/support/language_value.h"
#include "tests/support/user.h"
#include "tests/support/wide_text.h"

namespace kelvo::hostile {
namespace {

// What `look` says of the dialog that opens meanwhile and is cancelled then; "none" without one.
std::string See(const test::User& user, const std::function<void()>& open,
                const std::function<std::string(HWND)>& look) {
  std::string seen = "none";
  std::atomic<bool> is_over{false}, is_done{false};
  std::thread hand([&] {
    for (; !is_over; Sleep(1)) {
      const HWND dialog = user.Dialog();
      if (!dialog) continue;
      user.Settle();
      seen = look(dialog);
      user.Answer(dialog, IDCANCEL);
    }
    is_done = true;
  });
  open();
  is_over = true;
  for (MSG message; !is_done; Sleep(1)) {  // the hand may wait for a message
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }
  hand.join();
  return seen;
}

std::string FirstCommand(const test::User& user) {
  const HWND bar = user.MenuBar();
  const auto popup = reinterpret_cast<HMENU>(
      bar ? SendMessageW(bar, SHCMBM_GETSUBMENU, 0, IDM_BOOKMARK_POPUP) : 0);
  wchar_t text[64] = L"";
  return GetMenuStringW(popup, 0, text, 64, MF_BYPOSITION) ? test::Utf8(text) : "none";
}

}  // namespace

std::string LanguageAnswer(const Features& features, const std::string&) {
  constexpr DWORD kLanguage = 0x05FF;  // of the file's name
  static const test::User user(
      [](const std::string& what) { printf("language: no %s\n", what.c_str()); });
  SetDllDirectoryW(test::Wide(features.folder));
  test::LanguageValue value;
  value.Set(kLanguage);
  features.get(kFeatureSwitchLanguage);
  const std::string version =
      test::Utf8(static_cast<const wchar_t*>(features.get(kFeatureVersionText)));
  const uint8_t setting[kEqualizerSettingBytes] = {};
  const std::string caption = See(
      user, [&] { features.presets->SavePreset(setting, test::Wide(features.folder), nullptr); },
      [](HWND dialog) { return test::User::Text(dialog); });
  const std::string command = See(
      user, [&] { features.bookmarks->ShowBookmarks(nullptr); },
      [&](HWND) { return FirstCommand(user); });
  value.Set(0);
  features.get(kFeatureSwitchLanguage);
  std::string used;
  const auto add = [&](const char* part, const std::string& shown, const std::string& built_in) {
    if (shown == built_in) return;
    used += (used.empty() ? "" : " ") + std::string(part);
    if (shown[0] != 'Z') used += " " + shown;
  };
  add("text", version, "Velmora Feature Pack\rversion 2.51 installed.");
  add("dialog", caption, "Edit File Name");
  add("bar", command, "Edit bookmark");
  return used;
}

}  // namespace kelvo::hostile
