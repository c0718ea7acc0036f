#include "catalog/windows/scan_watch.h"

#include "entry/language/localized.h"
#include "entry/language/modules.h"
#include "res/resource_ids.h"

namespace kelvo {
namespace {

constexpr DWORD kIntervalMs = 100;
constexpr int kLabelHeight = 20;  // pixels

bool IsBetween(UINT message, UINT first, UINT last) noexcept {
  return message >= first && message <= last;
}

}  // namespace

ScanWatch::ScanWatch(HWND page, const WaitCursor& cursor, const bool& closing) noexcept
    : page_(page), cursor_(cursor), closing_(closing), shown_(GetTickCount()) {}

ScanWatch::~ScanWatch() {
  if (label_ && IsWindow(label_)) DestroyWindow(label_);
}

bool ScanWatch::GoesOn(size_t found) noexcept {
  const DWORD now = GetTickCount();
  if (!ended_ && now - shown_ >= kIntervalMs) {
    shown_ = now;
    Show(found);
    HandleMessages();
    cursor_.Renew();
  }
  return !ended_;
}

void ScanWatch::Show(size_t found) noexcept {
  wchar_t text[kTextCapacity];
  if (!FormatLocalized(text, kTextCapacity, IDS_SCANNING, {static_cast<int32_t>(found)})) return;
  if (!label_) {
    RECT client = {};
    GetClientRect(page_, &client);
    label_ =
        CreateWindowExW(0, L"STATIC", text,
                        WS_CHILD | WS_VISIBLE | WS_BORDER | WS_CLIPSIBLINGS | SS_CENTER | SS_NOTIFY,
                        0, 0, client.right, kLabelHeight, page_, nullptr, OwnModule(), nullptr);
    if (!label_) return;
    SendMessageW(label_, WM_SETFONT, static_cast<WPARAM>(SendMessageW(page_, WM_GETFONT, 0, 0)),
                 FALSE);
    SetWindowPos(label_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  } else {
    SetWindowTextW(label_, text);
  }
  UpdateWindow(label_);
}

void ScanWatch::HandleMessages() noexcept {
  MSG message;
  while (!ended_ && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      ended_ = true;
    } else if (IsBetween(message.message, WM_KEYFIRST, WM_KEYLAST)) {
      ended_ = message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE;
    } else if (IsBetween(message.message, WM_MOUSEFIRST, WM_MOUSELAST)) {
      ended_ = message.message == WM_LBUTTONUP && message.hwnd == label_;
    } else {
      DispatchMessageW(&message);
    }
  }
  ended_ = ended_ || closing_ || !IsWindow(page_);
}

}  // namespace kelvo
