// Language libraries. What is damaged as a file is not loaded at all; of the others each part that
// is missing or damaged is the built-in one.
#include "res/resource_ids.h"
#include "tests/hostile/corpus.h"
#include "tests/support/language_file.h"

namespace kelvo::hostile {

using test::DialogTemplate;
using test::kPe386;
using test::kPeAmd64;
using test::kPeHeader;
using test::kPeOptional;
using test::kPeOwn;
using test::kPeSection;
using test::LanguagePe;
using test::Le;
using test::MenuItem;
using test::MenuPopup;
using test::PeOptionalBytes;
using test::Resources;
using test::StringBlock;
using test::Utf16;
using test::Zeros;

namespace {

constexpr uint16_t kVersionBlock = IDS_VERSION / 16 + 1;
constexpr int kCommands[] = {IDM_BOOKMARK_EDIT, IDM_BOOKMARK_PLAY, IDM_BOOKMARK_ENQUEUE,
                             IDM_BOOKMARK_DELETE, IDM_BOOKMARK_DELETE_DEAD};
constexpr int kPopup = 0x10, kEnd = 0x80;

std::string Commands() {
  std::string items;
  for (const int id : kCommands) {
    items += MenuItem(id == IDM_BOOKMARK_DELETE_DEAD ? kEnd : 0, id, "Z");
  }
  return items;
}

std::string Table(int count, int popup) {
  std::string table;
  for (const int word :
       {IDM_BOOKMARKS, count, 0xFFFE, IDM_BOOKMARK_POPUP, 4, 0x18, IDM_BOOKMARK_POPUP, 0, popup}) {
    table += Le(static_cast<uint64_t>(word), 2);
  }
  return table;
}

// One image of 16 by 16 in two colours.
std::string Strip(uint32_t side) {
  return Le(40, 4) + Le(side, 4) + Le(side, 4) + Le(1, 2) + Le(1, 2) + Zeros(24 + 8 + 64);
}

std::string EntryDialog() {
  return DialogTemplate({{IDC_TEXT_ENTRY, ""}, {1, "Z"}, {2, "Z"}}, "Z");
}

// In the order of the file.
enum Part { kBitmap, kMenu, kDialog, kStrings, kData, kFiller, kParts };

// Where the file says what. Each part has one number in its folder and one language.
constexpr size_t InRoot(int part) {
  return kPeSection + 16 + 8 * static_cast<size_t>(part);
}
constexpr size_t FolderOf(int part) {
  return kPeSection + 16 + 8 * kParts + 24 * static_cast<size_t>(part);
}
constexpr size_t LanguagesOf(int part) {
  return FolderOf(kParts) + 24 * static_cast<size_t>(part);
}
constexpr size_t PlaceOf(int part) {
  return LanguagesOf(kParts) + 16 * static_cast<size_t>(part);
}

}  // namespace

Resources WholeLanguage() {
  return {{test::kBitmapType, {{IDB_MENU_BAR, Strip(16)}}},
          {test::kMenuType, {{IDM_BOOKMARKS, Le(0, 4) + MenuPopup(kEnd, "Z") + Commands()}}},
          {test::kDialogType, {{IDD_TEXT_ENTRY, EntryDialog()}}},
          {test::kStringsType, {{kVersionBlock, StringBlock({{IDS_VERSION % 16, "Z%d.%d"}})}}},
          {test::kDataType, {{IDM_BOOKMARKS, Table(1, 0)}}},
          // A system may load a file that lacks less than a page.
          {300, {{1, Zeros(0x3000)}}}};
}

Corpus LanguageFiles(bool loaded_by_system) {
  const std::string all = "text dialog bar", none;
  const std::string no_text = "dialog bar", no_dialog = "text bar", no_bar = "text dialog";
  const std::string without[] = {no_bar, no_bar, no_dialog, no_text, no_bar};
  const char* const names[] = {"bitmap", "menu", "dialog", "strings", "table"};
  const std::string whole = LanguagePe(WholeLanguage());
  Corpus files;
  // What the system says of a file may differ from what the file says.
  const auto add = [&](const std::string& name, const std::string& bytes, const std::string& want,
                       const std::string& system) {
    files.push_back({name, bytes, loaded_by_system ? system : want});
  };
  const auto changed = [&](size_t at, const std::string& bytes) {
    return std::string(whole).replace(at, bytes.size(), bytes);
  };
  const auto with = [](uint16_t type, const std::string& bytes) {
    Resources resources = WholeLanguage();
    resources[type].begin()->second = bytes;
    return LanguagePe(resources);
  };

  add("whole", whole, all, all);
  add("empty", "", none, none);
  const size_t sections = kPeOptional + PeOptionalBytes(kPeOwn);
  const struct {
    const char* name;
    size_t length;
    std::string want;  // of what is left
  } cuts[] = {
      {"the first header", 0x20, none},
      {"the mark", kPeHeader + 3, none},
      {"the second header", kPeHeader + 9, none},
      {"the third header", kPeOptional + 60, none},
      {"the list of parts", sections - 112, none},
      {"the section's entry", sections + 20, none},
      {"the section", kPeSection, none},
      {"the root", InRoot(2), none},
      {"the types", FolderOf(kDialog) + 8, none},
      {"the languages", LanguagesOf(kDialog), none},
      {"the places", PlaceOf(0) + 4, none},
      {"the first part", PlaceOf(kParts) + 9, none},
      {"the last part", whole.size() - 0x3005, no_bar},
  };
  for (const auto& cut : cuts) {
    add(std::string("cut in ") + cut.name, whole.substr(0, cut.length), cut.want, none);
  }
  // Some systems of 64 bits do load what holds no code of 32.
  if (kPeOwn == kPe386) add("of 64 bits", LanguagePe(WholeLanguage(), kPeAmd64), all, none);
  add("for the device", changed(kPeHeader + 4, Le(0x1C0, 2)), all, none);
  add("for no machine", changed(kPeHeader + 4, Le(0xFFFF, 2)), all, none);
  add("another first mark", changed(0, "ZM"), none, none);
  add("another second mark", changed(kPeHeader, "NE"), none, none);
  add("headers beyond the file", changed(0x3C, Le(0x7FFFFFF0, 4)), none, none);
  add("headers at 2^32 - 1", changed(0x3C, Le(~0u, 4)), none, none);
  add("a third header of 64 KB", changed(kPeHeader + 20, Le(0xFFFF, 2)), none, none);
  add("65,535 sections", changed(kPeHeader + 6, Le(0xFFFF, 2)), all, none);
  add("a section beyond the file", changed(sections + 20, Le(0x7FFFFE00, 4)), none, none);
  add("a section of 2^32 - 1", changed(sections + 16, Le(~0u, 4)), all, none);
  const size_t lists = sections - 128;
  add("no list of parts", changed(lists - 4, Le(0, 4)), none, none);
  add("resources nowhere", changed(lists + 16, Le(0, 8)), none, none);
  add("resources beyond all", changed(lists + 16, Le(0x7FFFFFF0, 4)), none, none);

  const auto folder = [](size_t at) { return Le(0x80000000 | (at - kPeSection), 4); };
  add("no types", changed(kPeSection + 12, Le(0, 4)), none, none);
  add("65,535 types", changed(kPeSection + 14, Le(0xFFFF, 2)), none, none);
  add("65,535 names of types", changed(kPeSection + 12, Le(0xFFFF, 2)), none, none);
  add("a type that leads back", changed(InRoot(kDialog) + 4, folder(kPeSection)), no_dialog,
      no_dialog);
  add("a number that leads back", changed(FolderOf(kDialog) + 20, folder(FolderOf(kDialog))),
      no_dialog, no_dialog);
  add("a language that leads back", changed(LanguagesOf(kStrings) + 20, folder(kPeSection)),
      no_text, no_text);
  add("a type that is a place", changed(InRoot(kStrings) + 4, Le(PlaceOf(kStrings), 4)), no_text,
      no_text);
  add("no languages", changed(LanguagesOf(kDialog) + 12, Le(0, 4)), no_dialog, no_dialog);
  for (int part = 0; part < kFiller; ++part) {
    const std::string name = names[part], want = without[part];
    const auto each = [&](const char* what, size_t at, const std::string& bytes) {
      add(name + ": " + what, changed(at, bytes), want, want);
    };
    each("types beyond all", InRoot(part) + 4, Le(~0u - 15, 4));
    each("numbers beyond all", FolderOf(part) + 20, Le(~0u - 15, 4));
    each("another number", FolderOf(part) + 16, Le(1, 4));
    each("its place beyond all", LanguagesOf(part) + 20, Le(0x7FFFFFF0, 4));
    each("beyond all", PlaceOf(part), Le(0x6FFFFFF0, 4));
    each("of 2^32 - 1 bytes", PlaceOf(part) + 4, Le(~0u, 4));
    each("of 2^31 bytes", PlaceOf(part) + 4, Le(0x80000000, 4));
    if (part != kBitmap) each("of no bytes", PlaceOf(part) + 4, Le(0, 4));
    Resources rest = WholeLanguage();
    rest.erase(std::next(rest.begin(), part));
    add(name + ": missing", LanguagePe(rest), want, want);
  }
  // Nobody but the system looks into images.
  add("an image that is none", with(test::kBitmapType, Zeros(8)), all, no_bar);
  add("an image as large as numbers", with(test::kBitmapType, Strip(0x7FFFFFFF)), all, no_bar);

  const auto text = [&](const std::string& format) {
    return with(test::kStringsType, StringBlock({{IDS_VERSION % 16, format}}));
  };
  const std::string long_text(60000, 'l');
  add("no such string", with(test::kStringsType, StringBlock({{1, "Z"}})), no_text, no_text);
  add("one byte of strings", with(test::kStringsType, "x"), no_text, no_text);
  add("a string beyond its block", with(test::kStringsType, Le(0xFFFF, 2) + Utf16("Z%d.%d")),
      no_text, no_text);
  add("a long string", text("Z%d.%d" + long_text), all, all);
  add("numbers that are cut off", text(long_text + "%d.%d"), all, all);
  add("a string that asks for texts", text("%s%s"), no_text, no_text);
  add("a string that asks for more", text("%d.%d.%d"), no_text, no_text);

  const std::string dialog = EntryDialog();
  const auto counted = [&](uint32_t count) {
    return with(test::kDialogType, std::string(dialog).replace(8, 2, Le(count, 2)));
  };
  add("no control counted", counted(0), no_dialog, no_dialog);
  add("one control too few counted", counted(2), no_dialog, no_dialog);
  add("one control too many counted", counted(4), no_dialog, no_dialog);
  add("65,535 controls counted", counted(0xFFFF), no_dialog, no_dialog);
  for (const size_t left : {size_t{3}, size_t{17}, size_t{19}, dialog.size() - 30,
                            dialog.size() - 4, dialog.size() - 1}) {
    add("a dialog cut at " + std::to_string(left), with(test::kDialogType, dialog.substr(0, left)),
        no_dialog, no_dialog);
  }
  std::string endless = dialog;
  endless.replace(endless.size() - 2, 2, Le(0xFFFF, 2));
  add("a control's data beyond the dialog", with(test::kDialogType, endless), no_dialog, no_dialog);
  add("a dialog of the other form, cut",
      with(test::kDialogType, Le(0xFFFF0001, 4) + dialog.substr(4)), no_dialog, no_dialog);
  add("a long caption",
      with(test::kDialogType,
           DialogTemplate({{IDC_TEXT_ENTRY, ""}, {1, ""}, {2, ""}}, "Z" + long_text)),
      all, all);
  std::map<int, std::string> many = {{IDC_TEXT_ENTRY, ""}};
  for (int id = 1; id <= 400; ++id) many[id] = "Z";
  add("400 controls", with(test::kDialogType, DialogTemplate(many, "Z")), all, all);

  const auto menu = [&](const std::string& bytes) { return with(test::kMenuType, bytes); };
  const auto deep = [](size_t levels) {
    std::string nested = Le(0, 4);
    for (size_t i = 0; i < levels; ++i) nested += MenuPopup(kEnd, "Z");
    return nested + Commands();
  };
  const std::string bar = deep(1);
  add("popups in popups", menu(deep(6)), all, all);
  add("9 popups in each other", menu(deep(9)), no_bar, no_bar);
  add("100,000 popups in each other", menu(deep(100000)), no_bar, no_bar);
  add("a menu without an end", menu(Le(0, 4) + MenuPopup(0, "Z") + Commands()), no_bar, no_bar);
  add("a menu that ends before its commands", menu(Le(0, 4) + MenuItem(kEnd, 1, "Z") + Commands()),
      no_bar, no_bar);
  add("a popup alone", menu(Le(0, 4) + MenuPopup(kEnd, "Z")), no_bar, no_bar);
  add("a menu cut in a text", menu(bar.substr(0, bar.size() - 2)), no_bar, no_bar);
  add("a menu cut in a number", menu(bar.substr(0, bar.size() - 5)), no_bar, no_bar);
  add("a menu of the other form", menu(Le(1, 2) + bar.substr(2)), no_bar, no_bar);
  add("a menu that begins elsewhere", menu(Le(0, 2) + Le(0xFFFF, 2) + bar.substr(4)), no_bar,
      no_bar);
  add("a long menu text", menu(Le(0, 4) + MenuPopup(kEnd, long_text) + Commands()), all, all);
  add("a table without its button", with(test::kDataType, Table(1, 0).substr(0, 4)), no_bar,
      no_bar);
  add("a table of zeros", with(test::kDataType, Zeros(40)), no_bar, no_bar);
  add("65,535 buttons", with(test::kDataType, Table(0xFFFF, 0)), no_bar, no_bar);
  add("a button for a popup that is not there", with(test::kDataType, Table(1, 9)), all, no_bar);
  return files;
}

}  // namespace kelvo::hostile
