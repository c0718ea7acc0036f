// The small dialog for one line of text that several features share ("Edit File Name").
#pragma once

#include <stdint.h>
#include <windows.h>

#include "base/text/wide.h"

namespace kelvo {

class TextEntryDialog {
 public:
  TextEntryDialog() noexcept = default;

  // Its one slot: destroys the object and gives its memory back when bit 0 of `flags` is set.
  virtual void Destroy(uint32_t flags) noexcept;

  void SetText(const wchar_t* text) noexcept { CopyWide(text_, kTextCapacity, text); }
  const wchar_t* GetText() const noexcept { return text_; }

  // Lets the user edit the text, modally. True when a text that is not empty was confirmed. What is
  // typed first replaces all of the text, or that before its last point.
  enum class Replaced { kAll, kBeforeExtension };
  bool Run(HWND parent, Replaced replaced) noexcept;

 private:
  class Window;

  wchar_t text_[kTextCapacity] = {};
  uint32_t cancelled_ = 1;
};

}  // namespace kelvo
