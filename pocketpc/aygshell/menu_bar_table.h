// The table behind a menu bar: 16-bit little-endian words as base/windows/pocketpc.h describes
// them.
#pragma once

#include <stddef.h>
#include <stdint.h>

namespace kelvo {

struct MenuBarButton {
  static constexpr uint16_t kNoImage = 0xFFFE;
  static constexpr uint16_t kNoPopup = 0xFFFF;

  bool HasImage() const noexcept { return image != kNoImage; }
  bool HasPopup() const noexcept { return popup != kNoPopup; }

  uint16_t image;  // index in the strip; the width in pixels when the button is a separator
  uint16_t command;
  uint8_t state;   // TBSTATE_ bits
  uint8_t style;   // TBSTYLE_ bits
  uint16_t text;   // string id: label of a button without image, tip of one with; 0 for none
  uint16_t popup;  // index in the menu
};

struct MenuBarTable {
  static constexpr size_t kMaxButtons = 32;

  uint16_t menu = 0;  // id of the menu resource; 0 for none
  size_t count = 0;
  MenuBarButton buttons[kMaxButtons];
};

// False, with *out untouched, when the table is truncated or has too many buttons. What follows the
// last button is padding.
[[nodiscard]] bool ReadMenuBarTable(const void* bytes, size_t size, MenuBarTable* out) noexcept;

}  // namespace kelvo
