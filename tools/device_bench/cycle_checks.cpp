#include <stdio.h>

#include <filesystem>

#include "checks.h"
#include "reference_decoder.h"
#include "vorbis_player.h"

namespace bench {
namespace {

constexpr uint32_t kEffectsFeature = 9;
constexpr uint32_t kBassMode = 4;
constexpr int32_t kPreamp = 13;
constexpr int32_t kSliders[10] = {10, 3, 14, 20, 5, 9, 14, 12, 7, 2};

// The library with a model of its time.
class Timed {
 public:
  Timed(const std::string& dll, const std::vector<uint8_t>& file)
      : player(dll, file, "."),
        model(player.process.machine, player.process.base(), player.process.dll().size()),
        effects_(player.process.CallExport("GetFeature", {kEffectsFeature})),
        block_(player.process.heap.Take(sizeof(kSliders))) {
    std::copy_n(reinterpret_cast<const uint8_t*>(kSliders), sizeof(kSliders),
                player.process.machine.At(block_, sizeof(kSliders)));
    player.process.CallSlot(effects_, 4, {kPreamp, block_});
    player.process.CallSlot(effects_, 1, {kBassMode});
  }

  // Runs stages of the effects over a block.
  template <class Call>
  void Process(bool equalizer, bool bass, uint32_t samples, uint32_t bytes, Call call) {
    Machine& machine = player.process.machine;
    machine.SetWord(block_, samples);
    const uint32_t table = machine.Word(effects_);
    if (equalizer) call(machine.Word(table + 4 * 5), {effects_, block_, bytes});
    if (bass) call(machine.Word(table + 4 * 2), {effects_, block_, bytes});
  }

  VorbisPlayer player;
  CycleModel model;

 private:
  uint32_t effects_, block_;
};

Cycles operator-(const Cycles& a, const Cycles& b) {
  return {a.instructions - b.instructions, a.all - b.all, a.memory - b.memory,
          a.code_misses - b.code_misses, a.data_misses - b.data_misses};
}

// Plays a file to its end, each block with effects or without.
void MeasurePlaying(Report& report, const std::string& dll, const std::vector<uint8_t>& file,
                    const std::string& name, bool effects) {
  const Decoded here = DecodeHere(file);
  Timed timed(dll, file);
  VorbisPlayer& player = timed.player;
  if (effects) {
    player.output.OnWrite([&](uint32_t samples, uint32_t bytes) {
      timed.Process(true, true, samples, bytes,
                    [&](uint32_t function, const std::vector<uint32_t>& arguments) {
                      player.process.machine.RunInside(function, arguments);
                    });
    });
  }
  report.Check("open " + name, player.Open(u"\\Test.ogg"));
  const Cycles opened = timed.model.total();
  player.Play();
  report.Check("plays to its end",
               player.PlayToEnd() && (player.output.pcm() == here.pcm) != effects);
  report.Figure(name, timed.model.total() - opened, here.seconds());
  player.Close();
}

void MeasureStage(Report& report, const std::string& dll, const std::vector<uint8_t>& file,
                  bool equalizer, const std::string& name) {
  constexpr uint32_t kBlockBytes = 16384;
  const Decoded here = DecodeHere(file);
  Timed timed(dll, file);
  Process& process = timed.player.process;
  const uint32_t samples = process.heap.Take(kBlockBytes);
  const Cycles before = timed.model.total();
  uint32_t done = 0;
  for (; done + kBlockBytes <= here.pcm.size(); done += kBlockBytes) {
    std::copy_n(here.pcm.data() + done, kBlockBytes, process.machine.At(samples, kBlockBytes));
    timed.Process(equalizer, !equalizer, samples, kBlockBytes,
                  [&](uint32_t function, const std::vector<uint32_t>& arguments) {
                    process.Call(function, arguments);
                  });
  }
  report.Figure(name, timed.model.total() - before, done / 4.0 / here.sample_rate);
}

}  // namespace

void MeasureCycles(Report& report, const std::string& dll, const std::vector<std::string>& media) {
  std::vector<uint8_t> file;
  for (const std::string& path : media) {
    file = ReadFileHere(path);
    MeasurePlaying(report, dll, file, std::filesystem::path(path).stem().string(), false);
  }
  MeasureStage(report, dll, file, true, "equalizer");
  MeasureStage(report, dll, file, false, "bass");
  MeasurePlaying(report, dll, file, "all_together", true);
}

}  // namespace bench
