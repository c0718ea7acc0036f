// What sound costs on the device, in an emulator of its processor.
//
//   device_bench instructions Kelvo.dll BUDGETS MEDIA.ogg...    of playing each file
//   device_bench cycles Kelvo.dll BUDGETS MEDIA.ogg...
//       estimates of playing each file, and of the effects on the last one
//   device_bench program Kelvo.dll PROGRAM.exe REPORT
//       runs a program of the device beside the library; prints the file REPORT that it writes, and
//       ends with its exit code
#include <stdio.h>
#include <string.h>

#include <filesystem>

#include "cycle_model.h"
#include "library.h"
#include "player.h"
#include "program.h"
#include "report.h"

namespace bench {
namespace {

std::string NameOf(const std::string& path) {
  return std::filesystem::path(path).stem().string();
}

// Millions a second of audio, with opening.
void CountInstructions(Report& report, const std::string& dll,
                       const std::vector<std::string>& media) {
  for (const std::string& path : media) {
    Library library(dll);
    Player player(library, ReadFileHere(path));
    const uint64_t before = library.machine.instructions();
    player.Open();
    player.Play();
    const auto used = static_cast<double>(library.machine.instructions() - before);
    report.Figure(NameOf(path), used * 1e-6 / player.seconds(), "M instructions");
  }
}

void ReportCycles(Report& report, const std::string& name, const Cycles& used, double seconds) {
  const double per_second = 1e-6 / seconds;
  printf(
      "     %.2f M instructions; %.1f %% of the time for memory: %.0f lines of code and %.0f of"
      " data a second\n",
      static_cast<double>(used.instructions) * per_second, 100 * used.memory / used.all,
      static_cast<double>(used.code_misses) / seconds,
      static_cast<double>(used.data_misses) / seconds);
  report.Figure(name + "_mhz", used.all * per_second, "MHz");
}

// The library's effects, with a setting in which nothing is left out.
class Effects {
 public:
  static constexpr uint32_t kBass = 2, kEqualizer = 5;  // slots

  explicit Effects(Library& library)
      : library_(library),
        object_(library.GetFeature(9)),
        block_(library.machine.Allocate(sizeof(kSliders))) {
    memcpy(library.machine.At(block_, sizeof(kSliders)), kSliders, sizeof(kSliders));
    library.CallSlot(object_, 4, {13, block_});
    library.CallSlot(object_, 1, {4});
  }
  void Process(uint32_t slot, uint32_t samples, uint32_t bytes) {
    library_.machine.SetWord(block_, samples);
    library_.CallSlot(object_, slot, {block_, bytes});
  }

 private:
  static constexpr int32_t kSliders[10] = {10, 3, 14, 20, 5, 9, 14, 12, 7, 2};
  Library& library_;
  const uint32_t object_, block_;
};

// Playing without opening, each block with effects or without. Returns the sound.
std::vector<uint8_t> MeasurePlaying(Report& report, const std::string& dll, const std::string& path,
                                    bool with_effects, double* seconds) {
  Library library(dll);
  CycleModel model(library.machine, Machine::kBase, library.bytes());
  Effects effects(library);
  Player player(library, ReadFileHere(path));
  std::vector<uint8_t> sound;
  player.on_block = [&](uint32_t samples, uint32_t bytes) {
    if (with_effects) {
      effects.Process(Effects::kEqualizer, samples, bytes);
      effects.Process(Effects::kBass, samples, bytes);
    }
    const uint8_t* const data = library.machine.At(samples, bytes);
    sound.insert(sound.end(), data, data + bytes);
  };
  player.Open();
  const Cycles opened = model.total();
  player.Play();
  *seconds = player.seconds();
  ReportCycles(report, with_effects ? "all_together" : NameOf(path), model.total() - opened,
               *seconds);
  return sound;
}

void MeasureStage(Report& report, const std::string& dll, const std::vector<uint8_t>& sound,
                  double seconds, uint32_t slot, const std::string& name) {
  constexpr uint32_t kBlockBytes = 16384;
  Library library(dll);
  CycleModel model(library.machine, Machine::kBase, library.bytes());
  Effects effects(library);
  const uint32_t samples = library.machine.Allocate(kBlockBytes);
  const Cycles before = model.total();
  for (size_t done = 0; done < sound.size(); done += kBlockBytes) {
    const auto bytes = static_cast<uint32_t>(std::min<size_t>(kBlockBytes, sound.size() - done));
    memcpy(library.machine.At(samples, bytes), sound.data() + done, bytes);
    effects.Process(slot, samples, bytes);
  }
  const Cycles used = model.total() - before;
  ReportCycles(report, name, used, seconds);
  report.Figure(name + "_frame",
                static_cast<double>(used.instructions) / static_cast<double>(sound.size() / 4),
                "instructions");
}

void MeasureCycles(Report& report, const std::string& dll, const std::vector<std::string>& media) {
  std::vector<uint8_t> sound;
  double seconds = 0;
  for (const std::string& path : media) {
    sound = MeasurePlaying(report, dll, path, false, &seconds);
  }
  MeasureStage(report, dll, sound, seconds, Effects::kEqualizer, "equalizer");
  MeasureStage(report, dll, sound, seconds, Effects::kBass, "bass");
  MeasurePlaying(report, dll, media.back(), true, &seconds);
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  const std::string mode = argc > 4 ? argv[1] : "";
  if (mode == "program") return bench::RunProgram(argv[2], argv[3], argv[4]);
  if (mode != "instructions" && mode != "cycles") {
    fputs(
        "usage: device_bench instructions|cycles Kelvo.dll BUDGETS MEDIA.ogg...\n"
        "       device_bench program Kelvo.dll PROGRAM.exe REPORT\n",
        stderr);
    return 2;
  }
  setvbuf(stdout, nullptr, _IOLBF, 0);
  bench::Report report(argv[3]);
  const std::vector<std::string> media(argv + 4, argv + argc);
  (mode == "cycles" ? bench::MeasureCycles : bench::CountInstructions)(report, argv[2], media);
  return report.Finish();
}
