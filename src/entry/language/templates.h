// Dialogs, menus and tables of strings as resources store them, walked through. Strangers' bytes,
// at any address: what is cut off lacks what would follow. Dialogs may have the classic or the
// extended form, menus the classic one, which is all that the device reads. Portable, so that a
// program for translators judges a file as the library does.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "base/bytes/little_endian.h"

namespace kelvo {

// UTF-16LE without a terminator.
struct StoredText {
  const uint8_t* bytes;
  size_t length;
  wchar_t operator[](size_t i) const noexcept {
    return static_cast<wchar_t>(LoadU16(bytes + 2 * i));
  }
};

// A resource word by word. Zeros behind its end, which Next and Skip notice.
class ResourceWords {
 public:
  ResourceWords(const void* bytes, size_t size) noexcept
      : bytes_(static_cast<const uint8_t*>(bytes)), count_(size / 2) {}

  bool at_end() const noexcept { return at_ >= count_; }
  bool is_cut() const noexcept { return is_cut_; }
  uint16_t Next() noexcept {
    is_cut_ |= at_end();
    return at_end() ? uint16_t{0} : LoadU16(bytes_ + 2 * at_++);
  }
  uint32_t NextLong() noexcept {
    const uint16_t low = Next();
    return low | static_cast<uint32_t>(Next()) << 16;
  }
  void Skip(size_t words) noexcept {
    is_cut_ |= words > count_ - at_;
    at_ += words < count_ - at_ ? words : count_ - at_;
  }
  // Up to a NUL, which is not counted, or to the end.
  StoredText NextText() noexcept {
    StoredText text = {bytes_ + 2 * at_, 0};
    while (Next() != 0) ++text.length;
    return text;
  }
  // So many words, or what there is of them.
  StoredText NextText(size_t length) noexcept {
    const size_t from = at_;
    Skip(length);
    return {bytes_ + 2 * from, at_ - from};
  }
  // A text or, behind a mark, a number, which counts as an empty text.
  StoredText NextName() noexcept {
    constexpr uint16_t kNumberFollows = 0xFFFF;
    if (at_end() || LoadU16(bytes_ + 2 * at_) != kNumberFollows) return NextText();
    Skip(2);
    return {bytes_, 0};
  }
  void AlignToLong() noexcept { Skip(at_ % 2); }

 private:
  const uint8_t* bytes_;
  size_t count_;
  size_t at_ = 0;
  bool is_cut_ = false;
};

// A dialog's controls, in order.
class DialogControls {
 public:
  struct Item {
    uint16_t id;
    StoredText text;
  };
  static constexpr uint16_t kUnnamed = 0xFFFF;

  DialogControls(const void* bytes, size_t size) noexcept : words_(bytes, size) {
    uint32_t style = words_.NextLong();
    is_extended_ = style == kExtendedMark;
    if (is_extended_) {
      words_.Skip(4);
      style = words_.NextLong();
    } else {
      words_.Skip(2);
    }
    left_ = words_.Next();
    words_.Skip(4);  // place and size
    words_.NextName();
    words_.NextName();
    words_.NextText();
    if ((style & kSetFont) != 0) {
      words_.Skip(is_extended_ ? 3 : 1);
      words_.NextText();
    }
  }

  bool is_extended() const noexcept { return is_extended_; }
  // Whether all that are counted are there.
  bool is_whole() const noexcept { return left_ == 0 && !words_.is_cut(); }
  bool Next(Item* item) noexcept {
    if (left_ == 0 || words_.at_end()) return false;
    --left_;
    words_.AlignToLong();
    words_.Skip(is_extended_ ? 10 : 8);
    item->id = words_.Next();
    if (is_extended_) words_.Next();
    words_.NextName();
    item->text = words_.NextName();
    const size_t data_bytes = words_.Next();
    words_.Skip(data_bytes / sizeof(uint16_t));
    return true;
  }
  // The next one that has a number.
  bool NextId(uint16_t* id) noexcept {
    Item item;
    do {
      if (!Next(&item)) return false;
    } while (item.id == kUnnamed);
    *id = item.id;
    return true;
  }

 private:
  static constexpr uint32_t kExtendedMark = 0xFFFF0001;
  static constexpr uint32_t kSetFont = 0x40;  // DS_SETFONT

  ResourceWords words_;
  bool is_extended_;
  uint16_t left_;
};

// A menu's popups, commands and separators, in order, to the end of the last one.
class MenuItems {
 public:
  static constexpr int kDeepest = 8;  // of popups in popups; systems read them by recursion
  struct Item {
    int depth;
    bool is_popup;  // its items follow
    uint16_t id;    // 0 for popups and separators
    StoredText text;
  };

  MenuItems(const void* bytes, size_t size) noexcept
      : words_(bytes, size), is_classic_(words_.NextLong() == 0) {}

  // Whether each popup has its end, and there is nothing that the device does not read.
  bool is_whole() const noexcept { return depth_ < 0 && is_classic_ && !words_.is_cut(); }
  bool Next(Item* item) noexcept {
    constexpr uint16_t kPopup = 0x10, kEnd = 0x80;  // MF_POPUP, MF_END
    if (depth_ < 0 || words_.at_end()) return false;
    const uint16_t flags = words_.Next();
    const bool is_last = (flags & kEnd) != 0;
    item->depth = depth_;
    item->is_popup = (flags & kPopup) != 0;
    item->id = item->is_popup ? uint16_t{0} : words_.Next();
    item->text = words_.NextText();
    if (item->is_popup) {
      if (depth_ + 1 == kDeepest) return false;
      is_last_[++depth_] = is_last;
    } else if (is_last) {
      do {
        --depth_;
      } while (depth_ >= 0 && is_last_[depth_ + 1]);
    }
    return true;
  }
  // The next command.
  bool NextId(uint16_t* id) noexcept {
    Item item;
    do {
      if (!Next(&item)) return false;
    } while (item.id == 0);
    *id = item.id;
    return true;
  }

 private:
  ResourceWords words_;
  bool is_classic_;
  bool is_last_[kDeepest] = {};  // the popup that each level belongs to, of its own level
  int depth_ = 0;                // below 0 behind the end
};

// Both from their begin: as they are whole, a system that makes windows of them stays inside.
template <class Items>
bool IsWhole(Items items) noexcept {
  typename Items::Item item;
  while (items.Next(&item)) {
  }
  return items.is_whole();
}

// A menu bar's table is its menu's number, the count of buttons, seven words for each. How many
// there are; 0 when it counts more than it has.
inline size_t ButtonCount(const void* bytes, size_t size) noexcept {
  const size_t count = size < 4 ? 0 : LoadU16(static_cast<const uint8_t*>(bytes) + 2);
  return count > (size - 4) / 14 ? 0 : count;
}

// Whether the others are whole and have every number of these.
template <class Ids>
bool HasAllOf(Ids own, const Ids& others) noexcept {
  if (!IsWhole(others)) return false;
  uint16_t wanted = 0;
  while (own.NextId(&wanted)) {
    Ids rest = others;
    uint16_t id = 0;
    do {
      if (!rest.NextId(&id)) return false;
    } while (id != wanted);
  }
  return true;
}

}  // namespace kelvo
