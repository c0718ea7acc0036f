#include "entry/language/localized.h"

#include <stddef.h>
#include <stdint.h>

#include "base/windows/resources.h"

namespace kelvo {
namespace {

// A resource word by word. Zeros behind its end: what is cut off there holds nothing more.
class ResourceWords {
 public:
  ResourceWords(HMODULE module, const wchar_t* name, const wchar_t* type) noexcept {
    size_t bytes = 0;
    words_ = static_cast<const uint16_t*>(FindResourceBytes(module, name, type, &bytes));
    count_ = bytes / sizeof(uint16_t);
  }

  bool at_end() const noexcept { return at_ >= count_; }
  uint16_t Next() noexcept { return at_end() ? 0 : words_[at_++]; }
  uint32_t NextLong() noexcept {
    const uint16_t low = Next();
    return low | static_cast<uint32_t>(Next()) << 16;
  }
  void Skip(size_t words) noexcept { at_ += words < count_ - at_ ? words : count_ - at_; }
  void SkipText() noexcept {
    while (Next() != 0) {
    }
  }
  // A text or, behind a mark, a number.
  void SkipName() noexcept {
    constexpr uint16_t kNumberFollows = 0xFFFF;
    if (!at_end() && words_[at_] == kNumberFollows) {
      Skip(2);
    } else {
      SkipText();
    }
  }
  void AlignToLong() noexcept { Skip(at_ % 2); }

 private:
  const uint16_t* words_;
  size_t count_;
  size_t at_ = 0;
};

// The numbers of a dialog's controls, those without one left out.
class DialogControls {
 public:
  DialogControls(HMODULE module, const wchar_t* name) noexcept : words_(module, name, RT_DIALOG) {
    uint32_t style = words_.NextLong();
    extended_ = style == kExtendedMark;
    if (extended_) {
      words_.Skip(4);
      style = words_.NextLong();
    } else {
      words_.Skip(2);
    }
    left_ = words_.Next();
    words_.Skip(4);  // place and size
    words_.SkipName();
    words_.SkipName();
    words_.SkipText();
    if ((style & DS_SETFONT) != 0) {
      words_.Skip(extended_ ? 3 : 1);
      words_.SkipText();
    }
  }

  bool Next(uint16_t* id) noexcept {
    constexpr uint16_t kUnnamed = 0xFFFF;
    while (left_ > 0 && !words_.at_end()) {
      --left_;
      words_.AlignToLong();
      words_.Skip(extended_ ? 10 : 8);
      *id = words_.Next();
      if (extended_) words_.Next();
      words_.SkipName();
      words_.SkipName();
      const size_t data_bytes = words_.Next();
      words_.Skip(data_bytes / sizeof(uint16_t));
      if (*id != kUnnamed) return true;
    }
    return false;
  }

 private:
  static constexpr uint32_t kExtendedMark = 0xFFFF0001;

  ResourceWords words_;
  bool extended_;
  uint16_t left_;
};

// The numbers of a menu's commands.
class MenuCommands {
 public:
  MenuCommands(HMODULE module, const wchar_t* name) noexcept : words_(module, name, RT_MENU) {
    words_.Skip(2);
  }

  bool Next(uint16_t* id) noexcept {
    while (!words_.at_end()) {
      const bool is_popup = (words_.Next() & MF_POPUP) != 0;
      *id = is_popup ? 0 : words_.Next();
      words_.SkipText();
      if (*id != 0) return true;
    }
    return false;
  }

 private:
  ResourceWords words_;
};

template <class Ids>
bool HasAllOf(Ids own, const Ids& others) noexcept {
  uint16_t wanted = 0;
  while (own.Next(&wanted)) {
    Ids rest = others;
    uint16_t id = 0;
    do {
      if (!rest.Next(&id)) return false;
    } while (id != wanted);
  }
  return true;
}

size_t TableBytes(HMODULE module, const wchar_t* name) noexcept {
  size_t bytes = 0;
  FindResourceBytes(module, name, RT_RCDATA, &bytes);
  return bytes;
}

}  // namespace

bool HasWholeDialog(HMODULE language, HMODULE module, const wchar_t* name) noexcept {
  return HasResource(language, name, RT_DIALOG) &&
         HasAllOf(DialogControls(module, name), DialogControls(language, name));
}

bool HasWholeMenuBar(HMODULE language, HMODULE module, const wchar_t* name) noexcept {
  const size_t table = TableBytes(language, name);
  return HasResource(language, name, RT_MENU) && table > 0 && table >= TableBytes(module, name) &&
         HasAllOf(MenuCommands(module, name), MenuCommands(language, name));
}

}  // namespace kelvo
