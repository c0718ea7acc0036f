#include "tests/languages/lint/strings_lint.h"

#include "res/resource_ids.h"
#include "tests/languages/lint/dialog_view.h"
#include "tests/languages/lint/resource_set.h"

namespace kelvo::test {
namespace {

using Strings = std::map<UINT, std::wstring>;

struct Room {
  UINT string;
  int width;  // pixels
  bool bold;
};
// Columns lose 12 pixels to their edges, captions the buttons beside them.
constexpr Room kRooms[] = {
    {IDS_TITLE, 150 - 12, false},        {IDS_COLUMN_ARTIST, 60 - 12, false},
    {IDS_COLUMN_ALBUM, 150 - 12, false}, {IDS_COLUMN_GENRE, 80 - 12, false},
    {IDS_TIME, 45 - 12, false},          {IDS_CATALOG_CAPTION, 240 - 52, true},
    {IDS_DELETE_CAPTION, 240 - 52, true},   {IDS_FILE_EXISTS, 240 - 52, true},
    {IDS_RENAME_FILE, 240 - 40, false},  {IDS_DELETE_ITEM, 240 - 40, false},
};

constexpr UINT kTabs[] = {IDS_MEDIA_TITLE, IDS_PLAYLISTS_TITLE, IDS_CURRENT_TITLE};
constexpr int kTabEdges = 6;
constexpr int kTipWidth = 240 - 8;
constexpr size_t kTipLength = 79;
// Beside the labels of a menu bar is the input panel's button.
constexpr int kLabelsWidth = 240 - 36;
constexpr int kLabelEdges = 12;

std::string NameOf(UINT id) {
  return "string " + std::to_string(id);
}

// What a format text asks for, a letter each: 'd' for a number, 's' for a text, '?' for what is not
// understood.
std::string Specifiers(const std::wstring& text) {
  std::string found;
  for (size_t i = 0; i + 1 < text.size(); ++i) {
    if (text[i] != L'%') continue;
    size_t at = i + 1;
    while (at < text.size() && text[at] >= L'0' && text[at] <= L'9') ++at;
    const wchar_t kind = at < text.size() ? text[at] : 0;
    if (kind != L'%') {
      found += kind == L'd' || kind == L'i' || kind == L'u' ? 'd' : kind == L's' ? 's' : '?';
    }
    i = at;
  }
  return found;
}

void LintText(UINT id, const std::wstring& want, const std::wstring& have, Findings* findings) {
  if (have.back() != 0) {
    findings->Add(NameOf(id), "does not end in NUL");
  } else if (have.find(L'\0') != have.size() - 1) {
    findings->Add(NameOf(id), "a NUL within the text");
  }
  if (Specifiers(have) != Specifiers(want)) {
    findings->Add(NameOf(id), "other specifiers than the built-in text: " + Quoted(have));
  }
}

void LintWidths(const Strings& strings, Findings* findings) {
  for (const Room& room : kRooms) {
    const auto found = strings.find(room.string);
    if (found != strings.end() && TextWidth(found->second.c_str(), room.bold) > room.width) {
      findings->Add(NameOf(room.string), "too wide: " + Quoted(found->second));
    }
  }
  int tabs = 0;
  for (const UINT id : kTabs) {
    const auto found = strings.find(id);
    if (found != strings.end()) tabs += kTabEdges + TextWidth(found->second.c_str(), false);
  }
  if (tabs > 240) findings->Add("tabs", "wider than the screen: " + std::to_string(tabs));
}

void LintMenuBars(HMODULE built_in, const Strings& strings, Findings* findings) {
  for (const UINT bar : ResourceIds(built_in, RT_RCDATA)) {
    int labels = 0;
    for (const MenuBarButtonText& button : MenuBarTexts(built_in, bar)) {
      const auto found = strings.find(button.string);
      if (found == strings.end()) continue;
      const std::wstring text = found->second.c_str();
      if (button.is_label) {
        labels += kLabelEdges + TextWidth(text, true);
      } else if (text.size() > kTipLength || TextWidth(text, false) > kTipWidth) {
        findings->Add(NameOf(button.string), "too wide for a tip: " + Quoted(text));
      }
    }
    if (labels > kLabelsWidth) {
      findings->Add("menu bar " + std::to_string(bar), "labels wider than the screen");
    }
  }
}

}  // namespace

void LintStrings(HMODULE built_in, HMODULE language, Findings* findings) {
  const Strings want = StoredStrings(built_in);
  const Strings have = StoredStrings(language);
  for (const auto& text : want) {
    const auto found = have.find(text.first);
    if (found == have.end()) {
      findings->Add(NameOf(text.first), "missing");
    } else {
      LintText(text.first, text.second, found->second, findings);
    }
  }
  for (const auto& text : have) {
    if (want.count(text.first) == 0) findings->Add(NameOf(text.first), "unknown");
  }
  LintWidths(have, findings);
  LintMenuBars(built_in, have, findings);
  // The proposed name of a preset becomes a file's.
  const auto preset = have.find(IDS_NEW_PRESET);
  if (preset != have.end() && preset->second.find_first_of(L"\\/:*?\"<>|") != std::wstring::npos) {
    findings->Add(NameOf(IDS_NEW_PRESET), "not a file name: " + Quoted(preset->second));
  }
}

}  // namespace kelvo::test
