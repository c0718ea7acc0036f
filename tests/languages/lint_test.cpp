// Every language library against the built-in resources, and the lint against planted faults.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/languages/lint/lint.h"

namespace kelvo {
namespace {

using test::LintLanguage;

// Loaded rather than read as a file: the bridge shows the resources of another file than its own.
class Resources {
 public:
  explicit Resources(const wchar_t* name) : module_(LoadLibraryW(name)) {}
  ~Resources() { FreeLibrary(module_); }
  HMODULE get() const { return module_; }

 private:
  HMODULE module_;
};

std::vector<std::string> Lint(const std::string& id) {
  const Resources built_in(L"Kelvo.dll");
  const Resources language((L"kv_mui." + std::wstring(id.begin(), id.end()) + L".dll").c_str());
  EXPECT_TRUE(built_in.get() && language.get()) << id;
  return LintLanguage(built_in.get(), language.get());
}

std::string Lines(const std::vector<std::string>& findings) {
  std::string all;
  for (const std::string& line : findings) all += line + "\n";
  return all;
}

class EachLanguage : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Lint, EachLanguage, testing::Values(KELVO_LANGUAGES),
                         [](const auto& tested) { return std::string(tested.param); });

TEST_P(EachLanguage, IsInStepAndFitsTheScreen) {
  const std::string findings = Lines(Lint(GetParam()));
  EXPECT_TRUE(findings.empty()) << findings;
}

TEST(LintTest, TheBuiltInResourcesFitTheScreen) {
  const Resources built_in(L"Kelvo.dll");
  EXPECT_EQ(Lines(LintLanguage(built_in.get(), built_in.get())), "");
}

// A third more than English takes is room enough, but for these.
TEST(LintTest, OnlyTabsAndLongTipsHaveNoRoomToGrow) {
  EXPECT_EQ(Lines(Lint("0501")), R"(tabs: wider than the screen: 351
string 40040: too wide for a tip: 'Àdd çhéçkéd îtémś tö çûrréñt płàýłîśtééééééééééééé'
string 40044: too wide for a tip: 'Éñqûéûé çhéçkéd îtémś îñ Véłmöràééééééééééé'
string 40036: too wide for a tip: 'Rémövé śéłéçtéd śöñg(ś) fröm łîśtéééééééééééé'
)");
}

// The faults of broken.rc.
TEST(LintTest, FindsEveryPlantedFault) {
  const std::string kMissing = ": missing";
  std::vector<std::string> missing = Lint("0502");
  const auto is_there = [&](const std::string& line) {
    return line.size() < kMissing.size() ||
           line.compare(line.size() - kMissing.size(), kMissing.size(), kMissing) != 0;
  };
  const auto first_missing = std::stable_partition(missing.begin(), missing.end(), is_there);
  const std::vector<std::string> faults(missing.begin(), first_missing);
  missing.erase(missing.begin(), first_missing);
  EXPECT_EQ(Lines(faults), R"(string 2000: other specifiers than the built-in text: 'version %d.%s'
string 2002: a NUL within the text
string 2009: does not end in NUL
string 3000: unknown
string 2003: too wide: 'Performing artist'
string 40019: too wide for a tip: 'Looks through all the folders of the device once more'
string 2005: not a file name: 'Bass/Treble'
dialog 111: an extended template, which the device does not read
dialog 129: other controls than the built-in one
dialog 133: caption is cut off: 'The places in music that I want to find again'
dialog 133: larger than the screen: 255 by 260
dialog 137: 'Where the file is:' is cut off: needs 90 by 13, has 45 by 13
dialog 137: control 1016 overlaps '&Description:'
dialog 137: 'Cancel' reaches outside
dialog 137: mnemonic used twice: '&Done'
menu 125: mnemonic used twice: 'Not &any'
menu 125: too wide: 'Check all that is not checked, and nothing else'
menu 127: other items than the built-in one
menu 134: item without text
table 134: not the built-in one
)");
  for (const char* what : {"string 2001", "dialog 131", "menu 126", "table 126", "bitmap 114"}) {
    EXPECT_EQ(std::count(missing.begin(), missing.end(), what + kMissing), 1) << what;
  }
}

}  // namespace
}  // namespace kelvo
