// Language libraries as files: strangers' bytes.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "base/bytes/memory_source.h"
#include "tests/support/wide_text.h"
#include "tools/kelvotool/console.h"
#include "tools/kelvotool/language_lint.h"

namespace kelvo::tool {
namespace {

using test::Le;
using test::Utf16;

std::string g_printed;

}  // namespace

// The program's halves that this test is.
void PrintBytes(Stream, const char* bytes, size_t count) noexcept {
  g_printed.append(bytes, count);
}
bool ErrorsAreWatched() noexcept {
  return true;
}
size_t EncodeUtf8(const wchar_t* text, char* bytes, size_t) noexcept {
  size_t count = 0;
  for (; text[count] != 0; ++count) bytes[count] = static_cast<char>(text[count]);
  return count;
}

namespace {

std::string Zeros(size_t count) {
  return std::string(count, '\0');
}

using Resources = std::map<ResourceKind, std::map<uint16_t, std::string>>;

// One section, at 0x1000 of memory and 0x200 of the file, with nothing but resources.
std::string Pe(const Resources& resources, bool is_64) {
  constexpr size_t kAddress = 0x1000;
  size_t tables = 16 + 8 * resources.size(), leaves = 0;
  for (const auto& [kind, ids] : resources) {
    tables += 16 + ids.size() * (8 + 24);
    leaves += ids.size();
  }
  std::string root = Zeros(14) + Le(resources.size(), 2), kinds, languages, leaf, data;
  size_t kind_at = 16 + 8 * resources.size();
  size_t language_at = tables - 24 * leaves, leaf_at = tables;
  for (const auto& [kind, ids] : resources) {
    root += Le(static_cast<uint64_t>(kind), 4) + Le(0x80000000 | kind_at, 4);
    kinds += Zeros(14) + Le(ids.size(), 2);
    kind_at += 16 + 8 * ids.size();
    for (const auto& [id, bytes] : ids) {
      kinds += Le(id, 4) + Le(0x80000000 | language_at, 4);
      languages += Zeros(14) + Le(1, 2) + Le(0, 4) + Le(leaf_at, 4);
      language_at += 24;
      leaf += Le(kAddress + tables + 16 * leaves + data.size(), 4) + Le(bytes.size(), 4) + Le(0, 8);
      leaf_at += 16;
      data += bytes;
    }
  }
  const std::string section = root + kinds + languages + leaf + data;
  const size_t optional = is_64 ? 240 : 224;
  std::string file = "MZ" + Zeros(0x3A) + Le(0x40, 4) + "PE" + Le(0, 4) + Le(1, 2) + Zeros(12) +
                     Le(optional, 2) + Le(0, 2) + Le(is_64 ? 0x20B : 0x10B, 2);
  file.resize(0x58 + optional - 128 + 16);
  file += Le(kAddress, 4) + Le(section.size(), 4);
  file.resize(0x58 + optional);
  file += Zeros(12) + Le(kAddress, 4) + Le(section.size(), 4) + Le(0x200, 4);
  file.resize(0x200);
  return file + section;
}

// A block of strings, each with its NUL.
std::string Strings(const std::map<int, std::string>& texts) {
  std::string block;
  for (int i = 0; i < 16; ++i) {
    const auto found = texts.find(i);
    block += found == texts.end()
                 ? Le(0, 2)
                 : Le(found->second.size() + 1, 2) + Utf16(found->second) + Le(0, 2);
  }
  return block;
}

std::string Dialog(const std::map<int, std::string>& controls) {
  std::string dialog = Le(0, 8) + Le(controls.size(), 2) + Le(0, 8) + Le(0, 6);
  for (const auto& [id, text] : controls) {
    dialog.resize((dialog.size() + 3) / 4 * 4);
    dialog += Zeros(16) + Le(static_cast<uint64_t>(id), 2) + Le(0xFFFF, 2) + Le(0x80, 2) +
              Utf16(text) + Le(0, 2) + Le(0, 2);
  }
  return dialog;
}

// A popup with its items, and a last item beside it.
std::string Menu(const std::map<int, std::string>& items) {
  std::string menu = Le(0, 4) + Le(0x10, 2) + Utf16("&Popup") + Le(0, 2);
  for (const auto& [id, text] : items) {
    menu += Le(id == items.rbegin()->first ? 0x80 : 0, 2) + Le(static_cast<uint64_t>(id), 2) +
            Utf16(text) + Le(0, 2);
  }
  return menu + Le(0x80, 2) + Le(99, 2) + Utf16("&Beside") + Le(0, 2);
}

// What is found; "unreadable" when the language is no library.
std::string Lint(const std::string& built_in, const std::string& language) {
  MemorySource own_file(built_in.data(), built_in.size());
  MemorySource file(language.data(), language.size());
  PeResources own, other;
  if (!own.Load(own_file) || !other.Load(file)) return "unreadable";
  g_printed.clear();
  Findings findings(L"f");
  LintLanguage(own, other, &findings);
  return g_printed;
}

const Resources kBuiltIn = {
    {ResourceKind::kStrings, {{63, Strings({{0, "%d of %s"}, {1, "One"}, {2, "Two"}})}}},
    {ResourceKind::kDialog, {{110, Dialog({{1, "&OK"}, {2, "&Cancel"}})}}},
    {ResourceKind::kMenu, {{126, Menu({{7, "&Play"}, {8, "&Stop"}})}}},
};

TEST(LanguageLint, SaysWhatALibraryLacks) {
  const auto with = [](ResourceKind kind, uint16_t id, const std::string& bytes) {
    Resources changed = kBuiltIn;
    changed[ResourceKind::kStrings][63] = Strings({{0, "%d von %s"}, {1, "Eins"}, {2, "Zwei"}});
    changed[kind][id] = bytes;
    return changed;
  };
  const struct {
    Resources language;
    std::string want;
  } kCases[] = {
      {with(ResourceKind::kData, 1, ""), ""},
      {with(ResourceKind::kStrings, 63, Strings({{0, "%d %d"}, {2, "Zwei"}})),
       "f: string 992: does not ask for what the built-in text does: \"%d %d\"\n"
       "f: string 993: missing: \"One\"\n"},
      {with(ResourceKind::kStrings, 63, Le(9, 2) + Utf16("cut")),
       "f: string 992: missing: \"%d of %s\"\nf: string 993: missing: \"One\"\n"
       "f: string 994: missing: \"Two\"\n"},
      {with(ResourceKind::kDialog, 110, Dialog({{2, "&Nein"}, {3, "&Nie && nimmer"}})),
       "f: dialog 110: not used, it lacks control 1\n"
       "f: dialog 110: two controls are chosen by the letter: \"n\"\n"},
      {with(ResourceKind::kMenu, 126, Menu({{8, "&Bestoppen"}, {9, "&Pause"}})),
       "f: menu 126: not used, it lacks command 7\n"},
      {with(ResourceKind::kMenu, 126, Menu({{7, "&Spiel"}, {8, "&Stop"}, {99, "&Popup"}})),
       "f: menu 126: two items are chosen by the letter: \"s\"\n"},
  };
  for (const auto& c : kCases) {
    for (const bool is_64 : {false, true}) {
      EXPECT_EQ(Lint(Pe(kBuiltIn, !is_64), Pe(c.language, is_64)), c.want);
    }
  }
}

TEST(LanguageLint, SurvivesEveryCutAndEveryWrongByte) {
  const std::string whole = Pe(kBuiltIn, false);
  const std::string clean = Lint(whole, whole);
  EXPECT_EQ(clean.find("missing"), std::string::npos) << clean;
  for (size_t length = 0; length < whole.size(); ++length) {
    EXPECT_NE(Lint(whole, whole.substr(0, length)), clean) << length;
  }
  for (size_t at = 0; at < whole.size(); ++at) {
    for (const char byte : {'\x00', '\xFF'}) {
      std::string changed = whole;
      changed[at] = byte;
      Lint(whole, changed);
      Lint(changed, whole);
    }
  }
}

}  // namespace
}  // namespace kelvo::tool
