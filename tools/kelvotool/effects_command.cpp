#include "tools/kelvotool/command.h"
#include "tools/kelvotool/console.h"
#include "tools/kelvotool/effects_check.h"

namespace kelvo::tool {
namespace {

int ShowEffects(const Arguments& arguments) noexcept {
  EffectsProcessor* const effects = LoadEffects(arguments.count > 0 ? arguments.paths[0] : nullptr);
  if (!effects) return 1;
  size_t first_wrong;
  const size_t right = CheckEffects(*effects, &first_wrong);
  Print(Stream::kOut, "effects: ");
  PrintNumber(Stream::kOut, static_cast<int>(right));
  Print(Stream::kOut, " of ");
  PrintNumber(Stream::kOut, static_cast<int>(kEffectsStepCount));
  Print(Stream::kOut, " blocks are as recorded");
  if (right < kEffectsStepCount) {
    Print(Stream::kOut, "; the first other one is number ");
    PrintNumber(Stream::kOut, static_cast<int>(first_wrong) + 1);
  }
  Print(Stream::kOut, "\n");
  return right < kEffectsStepCount;
}

}  // namespace

const Command kEffectsCommand = {
    L"effects",
    "  effects [KELVO.DLL]    equalizer and bass of a library against recorded results, which are\n"
    "                         the same for every processor\n",
    0,
    1,
    0,
    0,
    ShowEffects};

}  // namespace kelvo::tool
