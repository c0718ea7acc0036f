// What a page shows while the device is scanned.
#pragma once

#include <windows.h>

#include "catalog/lists/device_lists.h"
#include "catalog/windows/catalog_dialogs.h"

namespace kelvo {

// From time to time handles what has arrived meanwhile -- except for keys and taps, which wait for
// nothing -- and shows the number of files. A tap on that ends the scan, and so do Escape and Done.
class ScanWatch final : public ScanProgress {
 public:
  // `closing` becomes true when the sheet ends.
  ScanWatch(HWND page, const WaitCursor& cursor, const bool& closing) noexcept;
  ~ScanWatch();
  ScanWatch(const ScanWatch&) = delete;
  ScanWatch& operator=(const ScanWatch&) = delete;

  bool GoesOn(size_t found) noexcept override;

 private:
  void Show(size_t found) noexcept;
  void HandleMessages() noexcept;

  HWND page_;
  const WaitCursor& cursor_;
  const bool& closing_;
  HWND label_ = nullptr;
  DWORD shown_;  // when last
  bool ended_ = false;
};

}  // namespace kelvo
