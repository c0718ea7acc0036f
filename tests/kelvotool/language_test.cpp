// Language libraries as files: strangers' bytes.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "base/bytes/memory_source.h"
#include "tests/support/language_file.h"
#include "tools/kelvotool/console.h"
#include "tools/kelvotool/language_lint.h"

namespace kelvo::tool {
namespace {

using test::DialogTemplate;
using test::LanguagePe;
using test::Le;
using test::Resources;
using test::StringBlock;
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

// A popup with its items, and a last item beside it.
std::string Menu(const std::map<int, std::string>& items) {
  std::string menu = Le(0, 4) + test::MenuPopup(0, "&Popup");
  for (const auto& [id, text] : items) {
    menu += test::MenuItem(id == items.rbegin()->first ? 0x80 : 0, id, text);
  }
  return menu + test::MenuItem(0x80, 99, "&Beside");
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
    {test::kStringsType, {{63, StringBlock({{0, "%d of %s"}, {1, "One"}, {2, "Two"}})}}},
    {test::kDialogType, {{110, DialogTemplate({{1, "&OK"}, {2, "&Cancel"}})}}},
    {test::kMenuType, {{126, Menu({{7, "&Play"}, {8, "&Stop"}})}}},
};

TEST(LanguageLint, SaysWhatALibraryLacks) {
  const auto with = [](uint16_t kind, uint16_t id, const std::string& bytes) {
    Resources changed = kBuiltIn;
    changed[test::kStringsType][63] = StringBlock({{0, "%d von %s"}, {1, "Eins"}, {2, "Zwei"}});
    changed[kind][id] = bytes;
    return changed;
  };
  const struct {
    Resources language;
    std::string want;
  } kCases[] = {
      {with(test::kDataType, 1, ""), ""},
      {with(test::kStringsType, 63, StringBlock({{0, "%d %d"}, {2, "Zwei"}})),
       "f: string 992: does not ask for what the built-in text does: \"%d %d\"\n"
       "f: string 993: missing: \"One\"\n"},
      {with(test::kStringsType, 63, Le(9, 2) + Utf16("cut")),
       "f: string 992: missing: \"%d of %s\"\nf: string 993: missing: \"One\"\n"
       "f: string 994: missing: \"Two\"\n"},
      {with(test::kDialogType, 110, DialogTemplate({{2, "&Nein"}, {3, "&Nie && nimmer"}})),
       "f: dialog 110: not used, it lacks control 1\n"
       "f: dialog 110: two controls are chosen by the letter: \"n\"\n"},
      {with(test::kMenuType, 126, Menu({{8, "&Bestoppen"}, {9, "&Pause"}})),
       "f: menu 126: not used, it lacks command 7\n"},
      {with(test::kMenuType, 126, Menu({{7, "&Spiel"}, {8, "&Stop"}, {99, "&Popup"}})),
       "f: menu 126: two items are chosen by the letter: \"s\"\n"},
  };
  for (const auto& c : kCases) {
    for (const auto& [machine, other] :
         {std::pair(test::kPe386, test::kPeAmd64), {test::kPeAmd64, test::kPe386}}) {
      EXPECT_EQ(Lint(LanguagePe(kBuiltIn, machine), LanguagePe(c.language, other)), c.want);
    }
  }
}

TEST(LanguageLint, SurvivesEveryCutAndEveryWrongByte) {
  const std::string whole = LanguagePe(kBuiltIn);
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
