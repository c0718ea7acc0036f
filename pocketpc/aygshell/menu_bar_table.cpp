#include "pocketpc/aygshell/menu_bar_table.h"

#include "base/bytes/little_endian.h"

namespace kelvo {
namespace {

constexpr size_t kHeaderBytes = 4;
constexpr size_t kButtonBytes = 14;
// Push, separator, check, group, drop-down and autosize buttons. The rest of the byte means things
// that the device's toolbar never knew.
constexpr uint16_t kStyleBits = 0x1F;

}  // namespace

bool ReadMenuBarTable(const void* bytes, size_t size, MenuBarTable* out) noexcept {
  if (!bytes || size < kHeaderBytes) return false;
  const uint8_t* at = static_cast<const uint8_t*>(bytes);
  const size_t count = LoadU16(at + 2);
  if (count > MenuBarTable::kMaxButtons || count > (size - kHeaderBytes) / kButtonBytes)
    return false;

  MenuBarTable table;
  table.menu = LoadU16(at);
  table.count = count;
  at += kHeaderBytes;
  for (size_t i = 0; i < count; ++i, at += kButtonBytes) {
    MenuBarButton& button = table.buttons[i];
    button.image = LoadU16(at);
    button.command = LoadU16(at + 2);
    button.state = static_cast<uint8_t>(LoadU16(at + 4));
    button.style = static_cast<uint8_t>(LoadU16(at + 6) & kStyleBits);
    button.text = LoadU16(at + 8);
    button.popup = LoadU16(at + 12);
  }
  *out = table;
  return true;
}

}  // namespace kelvo
