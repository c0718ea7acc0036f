// A player in a test: with a window, and with sound that goes where the test wants it.
#pragma once

#include <kelvo/messages.h>
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "host/player/player.h"
#include "tests/pocketpc/wav_bytes.h"

namespace velmora::test {

// Loaded once, as in a program: the player control does not like to come and go.
inline const Library& TheLibrary() {
  static const Library library;
  return library;
}

inline std::wstring Media(const std::wstring& name) {
  return L"..\\..\\media\\" + name;
}

using kelvo::UseSink;

class Rig {
 public:
  Rig()
      : window_(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr,
                                nullptr)),
        player(TheLibrary(), window_) {}
  ~Rig() {
    player.Stop();
    player.SetVolume(100);
    player.SetBalance(0);
    DestroyWindow(window_);
  }

  void HandleMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      if (message.hwnd == window_ && message.message == kelvo::kMessageEndOfPlayback) {
        ++ends;
        player.OnEndOfPlayback();
      } else {
        DispatchMessageW(&message);
      }
    }
  }
  // Handles messages until the condition holds; false after a time that nothing here takes.
  template <class Condition>
  bool RunUntil(Condition condition) {
    const ULONGLONG start = GetTickCount64();
    while (!condition()) {
      if (GetTickCount64() - start > 60000) return false;
      MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
      HandleMessages();
    }
    return true;
  }
  bool RunUntilStopped() {
    return RunUntil([&] { return player.status().state == PlayState::kStopped; });
  }
  void RunFor(DWORD milliseconds) {
    const ULONGLONG start = GetTickCount64();
    RunUntil([&] { return GetTickCount64() - start >= milliseconds; });
  }
  // Waits, without handling it, for the end message.
  void WaitForWaitingEnd() {
    constexpr UINT kEnd = kelvo::kMessageEndOfPlayback;
    MSG message;
    while (!PeekMessageW(&message, window_, kEnd, kEnd, PM_NOREMOVE)) Sleep(10);
  }

 private:
  HWND window_;

 public:
  Player player;
  int ends = 0;  // end messages that were handled
};

}  // namespace velmora::test
