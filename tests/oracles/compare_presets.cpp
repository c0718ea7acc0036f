#include <gtest/gtest.h>

#include "eq/presets_feature.h"
#include "tests/oracles/cases.h"
#include "tests/oracles/presets_model.h"
#include "tests/support/memory_files.h"
#include "tests/support/wide_text.h"

namespace kelvo::oracle {
namespace {

using test::Utf8;
using test::Wide;

class Answers final : public PresetPrompts {
 public:
  bool AskName(WindowHandle, wchar_t (&answer)[kTextCapacity]) noexcept override {
    if (name) CopyWide(answer, kTextCapacity, Wide(ToUtf8(*name)));
    return name != nullptr;
  }
  bool ConfirmOverwrite(WindowHandle) noexcept override {
    asked = true;
    return overwrites;
  }
  const std::string* name = nullptr;
  bool overwrites = false;
  bool asked = false;
};

std::string SomeName(Dice& dice) {
  if (dice.OneIn(14)) return std::string(200 + dice.Roll(59), 'n');
  return dice.Word(
      "Rock|rOCK|a|a.b||\xE9t\xE9|Pop|a?b|..\\x|a\tb| "
      "|x.eqf|1234567890123456789|12345678901234567890");
}

// Files that the feature has written stand where the file system has put them.
void TakeOrder(const test::MemoryFiles& files, PresetsModel* model) {
  for (auto& [base, listed] : model->folders) {
    std::vector<PresetsModel::File> ordered;
    for (const auto& file : files.files()) {
      for (const PresetsModel::File& known : listed) {
        if (Folded(file.path) == Folded(ToUtf8(base + "\\presets\\" + known.name)))
          ordered.push_back(known);
      }
    }
    ASSERT_EQ(ordered.size(), listed.size());
    listed = ordered;
  }
}

void Compare(Dice& dice) {
  test::MemoryFiles files;
  Answers answers;
  PresetsFeature feature(files, answers);
  PresetsModel model;
  const std::string bases[] = {"\\V", "\\W", "\\none",
                               "\\" + std::string(235 + dice.Roll(20), 'b')};
  const bool many = dice.OneIn(300);  // more than the table has room for
  for (const char* base : {"\\V", "\\W"}) {
    files.PutFolder(std::string(base) + "\\presets");
    model.folders[base] = {};
    for (uint32_t n = many ? 101 : dice.Roll(5); n > 0; --n) {
      std::string name = many || dice.OneIn(3) ? std::to_string(n) : SomeName(dice);
      if (name.find_first_of("\\?\t") != std::string::npos || name.size() > 100) name = "n";
      name += many ? ".eqf" : dice.Word(".eqf|.EQF|.eqf|.eqfx|eqf|.txt");
      const std::string path = base + ("\\presets\\" + name);
      if (files.Find(ToUtf8(path))) continue;
      std::string bytes(dice.Roll(40), 'x');
      for (char& byte : bytes) byte = static_cast<char>(dice.Roll(256));
      files.Put(ToUtf8(path), bytes);
      bool is_there = false;
      for (const auto& file : model.folders[base]) is_there |= Folded(file.name) == Folded(name);
      if (!is_there) model.folders[base].push_back({name, bytes});
      if (is_there) return;  // the device's folders cannot hold both
    }
  }
  for (uint32_t step = 0; step < 10; ++step) {
    const std::string base = dice.Of(bases);
    const int32_t indices[] = {-1, 0, 1, 2, 7, 150, 199, 200, INT32_MAX, INT32_MIN};
    const int32_t index = dice.Of(indices);
    const std::string name = SomeName(dice);
    switch (many && step < 3 ? 0 : dice.Roll(8)) {
      case 0:
      case 1:
        TakeOrder(files, &model);
        ASSERT_EQ(feature.ListPresets(Wide(base)), model.List(base));
        break;
      case 2: {
        wchar_t shown[kMaxText] = L"before";
        feature.GetPresetName(index, shown);
        ASSERT_EQ(Utf8(shown), ToUtf8(model.Name(index)));
        break;
      }
      case 3:
        ASSERT_EQ(feature.FindPreset(Wide(ToUtf8(name))), model.Find(name)) << name;
        break;
      case 4: {
        uint8_t setting[11] = {'u', 'n', 't', 'o', 'u', 'c', 'h', 'e', 'd', '!', '!'};
        const std::string want = model.Read(index, base);
        ASSERT_EQ(feature.ReadPreset(index, setting, Wide(base)), want.empty() ? 0 : 1);
        ASSERT_EQ(std::string(reinterpret_cast<char*>(setting), 11),
                  want.empty() ? "untouched!!" : want);
        break;
      }
      case 5:
        feature.ClearPresets();
        model.names.clear();
        break;
      default: {
        std::string setting(11, '\0');
        for (char& byte : setting) byte = static_cast<char>(dice.Roll(256));
        answers.name = dice.OneIn(6) ? nullptr : &name;
        answers.overwrites = dice.OneIn(2);
        answers.asked = false;
        bool asked = false;
        const bool saved = model.Save(setting, base, answers.name, answers.overwrites, &asked);
        ASSERT_EQ(feature.SavePreset(reinterpret_cast<const uint8_t*>(setting.data()), Wide(base),
                                     nullptr),
                  saved ? 1 : 0)
            << base << "|" << name;
        ASSERT_EQ(answers.asked, asked);
      }
    }
  }
  size_t count = 0;
  for (const auto& [folder, listed] : model.folders) {
    count += 1 + listed.size();
    for (const auto& file : listed) {
      ASSERT_EQ(files[ToUtf8(folder + "\\presets\\" + file.name)], file.bytes) << file.name;
    }
  }
  ASSERT_EQ(files.files().size(), count) << "and no other file";
}

TEST(Oracle, Presets) {
  ForCases(600, Compare);
}

}  // namespace
}  // namespace kelvo::oracle
