#include <gtest/gtest.h>

#include <memory>

#include "base/bytes/memory_source.h"
#include "input/wma/asf_header.h"
#include "tests/oracles/asf_model.h"
#include "tests/oracles/cases.h"
#include "tests/support/asf_builder.h"

namespace kelvo::oracle {
namespace {

using test::AsfBuilder;
using test::Le;
using test::Utf16;

std::string SomeText(Dice& dice) {
  if (dice.OneIn(8)) return std::string(28 + dice.Roll(5), 'g');
  if (dice.OneIn(8)) return std::string(256 + dice.Roll(6), 't');
  return dice.Word("|Song|a b|9.0.1|x|ab\0cd|12");
}

uint64_t SomeNumber(Dice& dice) {
  const uint64_t numbers[] = {0,
                              1,
                              9,
                              255,
                              1000,
                              100000,
                              0x7FFFFFFF,
                              0xFFFFFFFF,
                              uint64_t{1} << 33,
                              uint64_t{1} << 63,
                              ~uint64_t{0}};
  return dice.Of(numbers);
}

std::string SomeAttribute(Dice& dice) {
  const std::string known = dice.Word(
      "WM/Genre|wm/genre|WM/AlbumTitle|WM/TrackNumber|WM/TRACK|WMFSDKVersion|WM/GenreID||WM/"
      "Picture");
  const std::string name = Utf16(known + (dice.OneIn(4) ? "" : std::string(1, '\0')));
  const auto type = dice.OneIn(2) ? 0 : dice.Roll(7);
  const std::string text = Utf16(SomeText(dice)) + (dice.OneIn(8) ? "o" : "");
  if (dice.OneIn(20))
    return Le(name.size(), 2) + name + Le(0, 2) + Le(30000, 2) + std::string(30000, 'l');
  if (type < 2 || type > 5)
    return Le(name.size(), 2) + name + Le(type, 2) + Le(text.size(), 2) + text;
  const int bytes = type == 4 ? 8 : type == 5 ? 2 : 4;
  return Le(name.size(), 2) + name + Le(type, 2) +
         Le(dice.OneIn(6) ? 9u : static_cast<uint32_t>(bytes), 2) + Le(SomeNumber(dice), bytes);
}

std::string SomeCodec(Dice& dice) {
  const std::string text = dice.Row(
      "VBR|vbr|64 kbps|, |44 kHz|stereo|Stereo|mono| |kbps|128|20.5|KBPS|99999999999|,|1-pass", 6);
  const std::string information(dice.OneIn(8) ? 300 : dice.Roll(3), 'i');
  return Le(dice.OneIn(4) ? 1 : 2, 2) + Le(5, 2) + Utf16("Name ") + Le(text.size(), 2) +
         Utf16(text) + Le(information.size(), 2) + information;
}

void Compare(Dice& dice) {
  AsfBuilder builder;
  for (uint32_t objects = dice.Roll(6); objects > 0; --objects) {
    const uint64_t size = dice.OneIn(10) ? SomeNumber(dice) : AsfBuilder::kRightSize;
    std::string parts;
    const uint32_t count = dice.Roll(4), claimed = dice.OneIn(8) ? dice.Roll(6) : count;
    switch (dice.Roll(6)) {
      case 0:
        for (int i = 0; i < 5; ++i) parts += Utf16(SomeText(dice));
        {
          std::string lengths;
          for (int i = 0; i < 5; ++i) {
            lengths += Le(dice.OneIn(8) ? dice.Roll(900) : parts.size() / 10 * 2, 2);
          }
          builder.Object(AsfBuilder::kDescription, lengths + parts, size);
        }
        break;
      case 1:
        for (uint32_t i = 0; i < count; ++i) parts += SomeAttribute(dice);
        builder.Object(AsfBuilder::kExtended, Le(claimed, 2) + parts, size);
        break;
      case 2:
        for (uint32_t i = 0; i < count; ++i) parts += SomeCodec(dice);
        builder.Object(AsfBuilder::kCodecs,
                       std::string(16, 'r') + Le(dice.OneIn(9) ? ~0u : claimed, 4) + parts, size);
        break;
      case 3:
        for (uint32_t i = 0; i < count; ++i) {
          parts += "ff" + Le(dice.OneIn(3) ? SomeNumber(dice) : dice.Roll(200000), 4);
        }
        builder.Object(AsfBuilder::kBitrates, Le(claimed, 2) + parts, size);
        break;
      case 4:
        builder.FileProperties(SomeNumber(dice), dice.OneIn(2) ? 0 : SomeNumber(dice));
        break;
      default:
        builder.Object("00112233-4455-6677-8899-AABBCCDDEEFF", std::string(dice.Roll(9), 'u'),
                       size);
    }
  }
  if (dice.OneIn(8)) builder.Count(dice.OneIn(2) ? ~0u : dice.Roll(4));
  std::string file = builder.Build();
  if (dice.OneIn(3)) file.resize(dice.Roll(static_cast<uint32_t>(file.size()) + 1));
  if (dice.OneIn(6) && !file.empty())
    file[dice.Roll(static_cast<uint32_t>(file.size()))] ^= 1 << dice.Roll(8);

  const Units path = dice.Word(u"\\m\\x.wma|a.b.wma|\\d.x\\Song|\\d\\.wma||\\d\\");
  const auto info = std::make_unique<AsfInfo>();
  MemorySource source(file.data(), file.size());
  const bool taken =
      ReadAsfInfo(source, reinterpret_cast<const wchar_t*>(path.c_str()), info.get());
  const AsfModel want(file);
  ASSERT_EQ(taken, want.is_asf);
  const auto text = [](const wchar_t* got) {
    return Units(reinterpret_cast<const char16_t*>(got));
  };
  ASSERT_EQ(text(info->title), want.title);
  ASSERT_EQ(text(info->author), want.author);
  ASSERT_EQ(text(info->album), want.album);
  ASSERT_EQ(text(info->format.genre), want.genre);
  ASSERT_EQ(text(info->display_title), taken ? want.DisplayTitle(path) : u"");
  ASSERT_EQ(info->format.track, taken ? want.track : 0);
  ASSERT_EQ(info->format.sample_rate, want.sample_rate);
  ASSERT_EQ(info->format.bit_rate, want.bit_rate);
  ASSERT_EQ(info->format.stereo, want.stereo);
  ASSERT_EQ(info->length_ms, want.length_ms);
  ASSERT_EQ(info->sdk_version, want.sdk_version);
}

TEST(Oracle, Asf) {
  ForCases(3000, Compare);
}

}  // namespace
}  // namespace kelvo::oracle
