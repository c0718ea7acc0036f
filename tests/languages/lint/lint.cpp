#include "tests/languages/lint/lint.h"

#include <algorithm>

#include "tests/languages/lint/dialog_view.h"
#include "tests/languages/lint/findings.h"
#include "tests/languages/lint/mnemonics.h"
#include "tests/languages/lint/resource_set.h"
#include "tests/languages/lint/strings_lint.h"

namespace kelvo::test {
namespace {

// The screen is 240 by 320 pixels; its top bar and the menu bar have 26 each, the input panel 80.
constexpr LONG kScreenWidth = 240;
constexpr LONG kHeightWithoutPanel = 268;
constexpr LONG kHeightAbovePanel = 188;
// Beside the caption: the start button and the Done button.
constexpr int kCaptionWidth = kScreenWidth - 2 * 26;
// Beside an item: its check mark and the arrow of a popup.
constexpr int kMenuItemWidth = kScreenWidth - 40;

void LintMnemonics(const std::string& where, const std::vector<std::wstring>& texts,
                   Findings* findings) {
  std::wstring used;
  for (const std::wstring& text : texts) {
    const wchar_t letter = MnemonicOf(text);
    if (letter == 0) continue;
    if (used.find(letter) != std::wstring::npos) {
      findings->Add(where, "mnemonic used twice: " + Quoted(text));
    }
    used += letter;
  }
}

void LintMenu(HMODULE built_in, HMODULE language, UINT id, Findings* findings) {
  const std::string where = "menu " + std::to_string(id);
  const std::vector<MenuItem> want = MenuItems(built_in, id);
  const std::vector<MenuItem> have = MenuItems(language, id);
  const bool same = std::equal(want.begin(), want.end(), have.begin(), have.end(),
                               [](const MenuItem& a, const MenuItem& b) {
                                 return a.depth == b.depth && a.command == b.command;
                               });
  if (!same) {
    findings->Add(where, have.empty() ? "missing" : "other items than the built-in one");
    return;
  }
  for (size_t i = 0; i < have.size(); ++i) {
    const MenuItem& item = have[i];
    if (item.text.empty() && item.command != MenuItem::kSeparator) {
      findings->Add(where, "item without text");
    }
    if (TextWidth(WithoutMnemonic(item.text), false) > kMenuItemWidth) {
      findings->Add(where, "too wide: " + Quoted(item.text));
    }
    // The items of one popup, or of the bar, once for each: at its first item.
    if (i > 0 && item.depth <= have[i - 1].depth) continue;
    std::vector<std::wstring> siblings;
    for (size_t k = i; k < have.size() && have[k].depth >= item.depth; ++k) {
      if (have[k].depth == item.depth) siblings.push_back(have[k].text);
    }
    LintMnemonics(where, siblings, findings);
  }
}

// The table is numbers alone: nothing in it depends on the language.
void LintBytes(HMODULE built_in, HMODULE language, UINT id, const wchar_t* type, const char* name,
               Findings* findings) {
  const std::string where = name + std::to_string(id);
  const std::string have = ResourceBytes(language, id, type);
  if (have.empty()) {
    findings->Add(where, "missing");
  } else if (have != ResourceBytes(built_in, id, type)) {
    findings->Add(where, "not the built-in one");
  }
}

std::string NameOf(const ControlView& control) {
  return control.text.empty() ? "control " + std::to_string(control.id) : Quoted(control.text);
}

std::string Size(LONG width, LONG height) {
  return std::to_string(width) + " by " + std::to_string(height);
}

void LintLayout(const std::string& where, const DialogView& dialog, Findings* findings) {
  const LONG height = dialog.has_edit ? kHeightAbovePanel : kHeightWithoutPanel;
  if (dialog.client.cx > kScreenWidth || dialog.client.cy > height) {
    findings->Add(where, "larger than the screen: " + Size(dialog.client.cx, dialog.client.cy));
  }
  const RECT client = {0, 0, dialog.client.cx, dialog.client.cy};
  for (size_t i = 0; i < dialog.controls.size(); ++i) {
    const ControlView& control = dialog.controls[i];
    RECT common;
    if (!IntersectRect(&common, &control.place, &client) || !EqualRect(&common, &control.place)) {
      findings->Add(where, NameOf(control) + " reaches outside");
    }
    const LONG width = control.place.right - control.place.left;
    const LONG line = control.place.bottom - control.place.top;
    if (control.needs_width > width || control.needs_height > line) {
      findings->Add(where, NameOf(control) + " is cut off: needs " +
                               Size(control.needs_width, control.needs_height) + ", has " +
                               Size(width, line));
    }
    for (size_t k = 0; k < i; ++k) {
      if (IntersectRect(&common, &control.place, &dialog.controls[k].place)) {
        findings->Add(where, NameOf(control) + " overlaps " + NameOf(dialog.controls[k]));
      }
    }
  }
}

void LintDialog(HMODULE built_in, HMODULE language, UINT id, Findings* findings) {
  const std::string where = "dialog " + std::to_string(id);
  DialogView want;
  DialogView have;
  if (!ViewDialog(built_in, id, &want) || !ViewDialog(language, id, &have)) {
    findings->Add(where, "missing");
    return;
  }
  if (have.extended) {
    findings->Add(where, "an extended template, which the device does not read");
    return;
  }
  const bool same =
      std::equal(want.controls.begin(), want.controls.end(), have.controls.begin(),
                 have.controls.end(), [](const ControlView& a, const ControlView& b) {
                   return a.id == b.id && a.kind == b.kind && a.text.empty() == b.text.empty();
                 });
  if (!same || want.is_page != have.is_page) {
    findings->Add(where, "other controls than the built-in one");
    return;
  }
  if (!have.is_page && TextWidth(have.caption, true) > kCaptionWidth) {
    findings->Add(where, "caption is cut off: " + Quoted(have.caption));
  }
  LintLayout(where, have, findings);
  std::vector<std::wstring> texts;
  for (const ControlView& control : have.controls) texts.push_back(control.text);
  LintMnemonics(where, texts, findings);
}

void LintUnknown(HMODULE built_in, HMODULE language, const wchar_t* type, const char* name,
                 Findings* findings) {
  const std::vector<UINT> known = ResourceIds(built_in, type);
  for (const UINT id : ResourceIds(language, type)) {
    if (!std::binary_search(known.begin(), known.end(), id)) {
      findings->Add(name + std::to_string(id), "unknown");
    }
  }
}

}  // namespace

std::vector<std::string> LintLanguage(HMODULE built_in, HMODULE language) {
  Findings findings;
  LintStrings(built_in, language, &findings);
  for (const UINT id : ResourceIds(built_in, RT_DIALOG)) {
    LintDialog(built_in, language, id, &findings);
  }
  for (const UINT id : ResourceIds(built_in, RT_MENU)) {
    LintMenu(built_in, language, id, &findings);
  }
  for (const UINT id : ResourceIds(built_in, RT_RCDATA)) {
    LintBytes(built_in, language, id, RT_RCDATA, "table ", &findings);
  }
  for (const UINT id : ResourceIds(built_in, RT_BITMAP)) {
    LintBytes(built_in, language, id, RT_BITMAP, "bitmap ", &findings);
  }
  LintUnknown(built_in, language, RT_DIALOG, "dialog ", &findings);
  LintUnknown(built_in, language, RT_MENU, "menu ", &findings);
  LintUnknown(built_in, language, RT_RCDATA, "table ", &findings);
  return findings.lines();
}

}  // namespace kelvo::test
