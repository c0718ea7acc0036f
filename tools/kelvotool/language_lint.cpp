#include "tools/kelvotool/language_lint.h"

#include "base/text/format.h"
#include "base/text/wide.h"
#include "res/resource_ids.h"
#include "tools/kelvotool/console.h"

namespace kelvo::tool {
namespace {

// A longer tip is cut off.
constexpr size_t kLongestTip = 79;
// So many in a hundred texts may be what they are in English: names, "Album", "Genre".
constexpr int kMostAsInEnglish = 20;

// Letters that choose among texts that are seen together, each once.
class Mnemonics {
 public:
  // 0, or the letter that is taken already.
  wchar_t Add(const StoredText& text) noexcept {
    for (size_t i = 0; i + 1 < text.length; ++i) {
      if (text[i] != '&') continue;
      const wchar_t letter = FoldCase(text[++i]);
      if (letter == '&') continue;
      for (size_t k = 0; k < count_; ++k) {
        if (letters_[k] == letter) return letter;
      }
      if (count_ < kMost) letters_[count_++] = letter;
    }
    return 0;
  }

 private:
  static constexpr size_t kMost = 64;
  wchar_t letters_[kMost];
  size_t count_ = 0;
};

bool HasAny(const wchar_t* text, const wchar_t* characters) noexcept {
  for (; *text != 0; ++text) {
    if (FindWide(characters, *text)) return true;
  }
  return false;
}

bool HasCombiningAccents(const wchar_t* text) noexcept {
  for (; *text != 0; ++text) {
    if (*text >= 0x0300 && *text <= 0x036F) return true;
  }
  return false;
}

// Whether the library's own formatting takes `text` with the arguments that `own` asks for.
bool AsksForTheSame(const wchar_t* own, const wchar_t* text) noexcept {
  FormatArgument arguments[2] = {0, 0};
  size_t count = 0;
  for (const wchar_t* at = own; (at = FindWide(at, L'%')) != nullptr && at[1] != 0; at += 2) {
    if (at[1] == '%') continue;
    if (count == 2) return true;  // none of the library's texts
    while (at[1] >= '0' && at[1] <= '9') ++at;
    if (at[1] == 's') arguments[count] = L"";
    ++count;
    if (at[1] == 0) break;
  }
  wchar_t out[kLongestStoredText];
  const auto takes = [&](const wchar_t* format) {
    if (count == 0) return FormatWide(out, kLongestStoredText, format, {});
    if (count == 1) return FormatWide(out, kLongestStoredText, format, {arguments[0]});
    return FormatWide(out, kLongestStoredText, format, {arguments[0], arguments[1]});
  };
  return !takes(own) || takes(text);
}

class LanguageLint {
 public:
  LanguageLint(const PeResources& built_in, const PeResources& language,
               Findings* findings) noexcept
      : built_in_(built_in), language_(language), findings_(*findings) {}

  void Run() noexcept {
    uint16_t id;
    for (size_t i = 0; built_in_.IdAt(ResourceKind::kStrings, i, &id); ++i) {
      for (int k = 0; k < 16; ++k) CheckString(static_cast<uint16_t>((id - 1) * 16 + k));
    }
    const bool is_translation = &built_in_ != &language_;
    if (is_translation && as_in_english_ * 100 > texts_ * kMostAsInEnglish) {
      findings_.AddNumber("string", first_as_in_english_,
                          "one of too many that are the built-in English ones:", as_in_english_);
    }
    for (size_t i = 0; built_in_.IdAt(ResourceKind::kDialog, i, &id); ++i) CheckDialog(id);
    for (size_t i = 0; built_in_.IdAt(ResourceKind::kMenu, i, &id); ++i) CheckMenu(id);
  }

 private:
  void CheckString(uint16_t id) noexcept;
  void CheckText(uint16_t id, const wchar_t* own, const wchar_t* text) noexcept;
  void CheckDialog(uint16_t id) noexcept;
  void CheckMenu(uint16_t id) noexcept;
  void CheckMnemonics(uint16_t id, MenuItems* items) noexcept;

  // Reports each number of the built-in ones that these lack.
  template <class Ids>
  void CompareIds(const char* kind, uint16_t id, const char* what, Ids own,
                  const Ids& others) noexcept {
    uint16_t wanted = 0;
    while (own.NextId(&wanted)) {
      Ids rest = others;
      uint16_t found = 0;
      bool is_there = false;
      while (!is_there && rest.NextId(&found)) is_there = found == wanted;
      if (!is_there) findings_.AddNumber(kind, id, what, wanted);
    }
  }

  const PeResources& built_in_;
  const PeResources& language_;
  Findings& findings_;
  int texts_ = 0;
  int as_in_english_ = 0;
  int first_as_in_english_ = 0;
};

void LanguageLint::CheckString(uint16_t id) noexcept {
  StoredText own_stored, stored;
  if (!built_in_.FindString(id, &own_stored)) return;
  wchar_t own[kLongestStoredText], text[kLongestStoredText];
  CopyStored(own_stored, own);
  ++texts_;
  if (!language_.FindString(id, &stored)) return findings_.Add("string", id, "missing", own);
  CopyStored(stored, text);
  if (stored[stored.length - 1] != 0) {
    return findings_.Add("string", id, "does not end in a NUL, so it is not used", text);
  }
  CheckText(id, own, text);
}

void LanguageLint::CheckText(uint16_t id, const wchar_t* own, const wchar_t* text) noexcept {
  if (CompareWide(own, text) == 0 && as_in_english_++ == 0) first_as_in_english_ = id;
  if (text[0] == 0) findings_.Add("string", id, "empty", own);
  if (!AsksForTheSame(own, text)) {
    findings_.Add("string", id, "does not ask for what the built-in text does", text);
  }
  if (HasCombiningAccents(text)) {
    findings_.Add("string", id, "has accents as characters of their own", text);
  }
  if (id == IDS_NEW_PRESET && HasAny(text, L"\\/:*?\"<>|")) {
    findings_.Add("string", id, "becomes a file's name and cannot be one", text);
  }
  if (IsTip(built_in_, id) && WideLength(text) > kLongestTip) {
    findings_.Add("string", id, "longer than a tip can be", text);
  }
}

void LanguageLint::CheckDialog(uint16_t id) noexcept {
  ResourceBytes own, other;
  if (!built_in_.Find(ResourceKind::kDialog, id, &own)) return;
  if (!language_.Find(ResourceKind::kDialog, id, &other)) {
    return findings_.Add("dialog", id, "missing");
  }
  DialogControls controls(other.bytes, other.size);
  CompareIds("dialog", id, "not used, it lacks control", DialogControls(own.bytes, own.size),
             controls);
  if (!IsWhole(controls)) findings_.Add("dialog", id, "not used, it is cut off");
  if (controls.is_extended()) {
    findings_.Add("dialog", id, "of the extended form, which the device does not read");
  }
  Mnemonics mnemonics;
  for (DialogControls::Item item; controls.Next(&item);) {
    const wchar_t letter[] = {mnemonics.Add(item.text), 0};
    if (letter[0]) findings_.Add("dialog", id, "two controls are chosen by the letter", letter);
  }
}

// One level, the popups in it each by itself.
void LanguageLint::CheckMnemonics(uint16_t id, MenuItems* items) noexcept {
  Mnemonics levels[MenuItems::kDeepest];
  for (MenuItems::Item item; items->Next(&item);) {
    const wchar_t letter[] = {levels[item.depth].Add(item.text), 0};
    if (letter[0]) findings_.Add("menu", id, "two items are chosen by the letter", letter);
    if (item.is_popup) levels[item.depth + 1] = Mnemonics();
  }
}

void LanguageLint::CheckMenu(uint16_t id) noexcept {
  ResourceBytes own, other;
  if (!built_in_.Find(ResourceKind::kMenu, id, &own)) return;
  if (!language_.Find(ResourceKind::kMenu, id, &other)) {
    return findings_.Add("menu", id, "missing");
  }
  MenuItems items(other.bytes, other.size);
  CompareIds("menu", id, "not used, it lacks command", MenuItems(own.bytes, own.size), items);
  if (!IsWhole(items)) findings_.Add("menu", id, "not used, it is cut off or too deep");
  CheckMnemonics(id, &items);
  ResourceBytes own_table, table;
  if (!built_in_.Find(ResourceKind::kData, id, &own_table)) return;
  if (!language_.Find(ResourceKind::kData, id, &table) ||
      ButtonCount(table.bytes, table.size) < ButtonCount(own_table.bytes, own_table.size)) {
    findings_.Add("menu", id, "not used, the table of its bar is missing or too short");
  }
  if (!language_.Has(ResourceKind::kBitmap, IDB_MENU_BAR)) {
    findings_.AddNumber("menu", id, "not used, its bar's images are missing: bitmap", IDB_MENU_BAR);
  }
}

}  // namespace

void CopyStored(const StoredText& stored, wchar_t (&text)[kLongestStoredText]) noexcept {
  size_t i = 0;
  for (; i < stored.length && i + 1 < kLongestStoredText && stored[i] != 0; ++i) {
    text[i] = stored[i];
  }
  text[i] = 0;
}

bool IsTip(const PeResources& built_in, uint16_t id) noexcept {
  uint16_t bar;
  for (size_t i = 0; built_in.IdAt(ResourceKind::kMenu, i, &bar); ++i) {
    ResourceBytes table;
    if (!built_in.Find(ResourceKind::kData, bar, &table)) continue;
    MenuBarButtons buttons(table);
    for (MenuBarButton button; buttons.Next(&button);) {
      if (!button.is_label && button.text == id) return true;
    }
  }
  return false;
}

void Findings::Begin(const char* kind, int id) noexcept {
  ++count_;
  Print(Stream::kOut, path_);
  Print(Stream::kOut, ": ");
  Print(Stream::kOut, kind);
  Print(Stream::kOut, " ");
  PrintNumber(Stream::kOut, id);
  Print(Stream::kOut, ": ");
}

void Findings::Add(const char* kind, int id, const char* what, const wchar_t* text) noexcept {
  Begin(kind, id);
  Print(Stream::kOut, what);
  if (text) {
    Print(Stream::kOut, ": \"");
    Print(Stream::kOut, text);
    Print(Stream::kOut, "\"");
  }
  Print(Stream::kOut, "\n");
}

void Findings::AddNumber(const char* kind, int id, const char* what, int number) noexcept {
  Begin(kind, id);
  Print(Stream::kOut, what);
  Print(Stream::kOut, " ");
  PrintNumber(Stream::kOut, number);
  Print(Stream::kOut, "\n");
}

void Findings::AddWidth(const char* kind, int id, const wchar_t* text, int width,
                        int room) noexcept {
  Begin(kind, id);
  PrintNumber(Stream::kOut, width);
  Print(Stream::kOut, " pixels where there are ");
  PrintNumber(Stream::kOut, room);
  Print(Stream::kOut, ": \"");
  Print(Stream::kOut, text);
  Print(Stream::kOut, "\"\n");
}

void LintLanguage(const PeResources& built_in, const PeResources& language,
                  Findings* findings) noexcept {
  LanguageLint(built_in, language, findings).Run();
}

}  // namespace kelvo::tool
