#pragma once

#include "tools/kelvotool/pe_resources.h"

namespace kelvo::tool {

// What is wrong with a language library, printed: "PATH: KIND NUMBER: WHAT".
class Findings {
 public:
  explicit Findings(const wchar_t* path) noexcept : path_(path) {}

  // `text`, which may be null, is quoted behind.
  void Add(const char* kind, int id, const char* what, const wchar_t* text = nullptr) noexcept;
  // The same with "WHAT NUMBER".
  void AddNumber(const char* kind, int id, const char* what, int number) noexcept;
  // A text of `width` pixels where there are `room`.
  void AddWidth(const char* kind, int id, const wchar_t* text, int width, int room) noexcept;

  int count() const noexcept { return count_; }

 private:
  void Begin(const char* kind, int id) noexcept;

  const wchar_t* path_;
  int count_ = 0;
};

// Holds a language library against the built-in resources, by the rules that the library goes by
// when it chooses between the two, and those of texts for people. Both may be one object: the
// built-in ones held against these rules.
void LintLanguage(const PeResources& built_in, const PeResources& language,
                  Findings* findings) noexcept;

// Whether the texts have room on the device's screen. False when this system cannot tell: it needs
// the font and the dialogs of Windows.
bool MeasureLanguage(const PeResources& built_in, const PeResources& language,
                     Findings* findings) noexcept;

inline constexpr size_t kLongestStoredText = 1024;

// What fits of a stored text, up to a NUL.
void CopyStored(const StoredText& stored, wchar_t (&text)[kLongestStoredText]) noexcept;

// A menu bar's table: its number, the count of buttons, seven words for each.
struct MenuBarButton {
  bool is_label;  // shows its text; the others have it as their tip
  uint16_t text;  // 0 for none
};
class MenuBarButtons {
 public:
  explicit MenuBarButtons(const ResourceBytes& table) noexcept : words_(table.bytes, table.size) {
    words_.Skip(1);
    left_ = words_.Next();
  }
  bool Next(MenuBarButton* button) noexcept {
    constexpr uint16_t kNoImage = 0xFFFE;
    if (left_ == 0 || words_.at_end()) return false;
    --left_;
    button->is_label = words_.Next() == kNoImage;
    words_.Skip(3);
    button->text = words_.Next();
    words_.Skip(2);
    return true;
  }

 private:
  ResourceWords words_;
  uint16_t left_;
};

// Whether some menu bar's button has the string for its tip.
bool IsTip(const PeResources& built_in, uint16_t id) noexcept;

}  // namespace kelvo::tool
