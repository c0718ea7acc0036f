#include <stdio.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "checks.h"
#include "fail.h"
#include "reference_decoder.h"
#include "vorbis_player.h"

namespace bench {

std::vector<uint8_t> ReadFileHere(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(stream), {}};
  if (bytes.empty()) Fail("cannot read %s", path.c_str());
  return bytes;
}

void MeasureVorbis(Report& report, const std::string& dll, const std::string& raw_decoder,
                   const std::vector<std::string>& media) {
  for (const std::string& path : media) {
    const std::string name = std::filesystem::path(path).stem().string();
    const std::vector<uint8_t> file = ReadFileHere(path);
    const Decoded here = DecodeHere(file);
    printf("%s: %.2f s of audio\n", name.c_str(), here.seconds());
    const double per_second = 1e-6 / here.seconds();
    {
      Process process(".");
      process.Load(raw_decoder);
      process.Attach();
      const uint32_t decode = process.CallExport("GetFeature", {0});
      const uint32_t bytes = static_cast<uint32_t>(file.size());
      const uint32_t room = static_cast<uint32_t>(here.pcm.size()) + 65536;
      const uint32_t data = process.heap.Take(bytes);
      const uint32_t pcm = process.heap.Take(room);
      std::copy(file.begin(), file.end(), process.machine.At(data, bytes));
      const uint64_t before = process.machine.instructions();
      const uint32_t got = process.Call(decode, {data, bytes, pcm, room});
      const uint64_t used = process.machine.instructions() - before;
      report.Check("raw decoder: PCM is bit-identical",
                   got == here.pcm.size() &&
                       std::equal(here.pcm.begin(), here.pcm.end(), process.machine.At(pcm, got)));
      report.Figure("raw_" + name, static_cast<double>(used) * per_second);
    }
    VorbisPlayer player(dll, file, ".");
    const uint64_t loaded = player.process.machine.instructions();
    report.Check("open", player.Open(u"\\Test.ogg"));
    const uint64_t opened = player.process.machine.instructions();
    const uint64_t calls = player.process.import_calls();
    player.Play();
    report.Check("plays to its end", player.PlayToEnd() && player.output.pcm() == here.pcm);
    const uint64_t used = player.process.machine.instructions() - loaded;
    report.Figure("play_" + name, static_cast<double>(used) * per_second);
    printf(
        "     opening: %.2f M instructions; %.0f system calls per second of audio; heap %u KB; "
        "deepest stack %u bytes\n",
        static_cast<double>(opened - loaded) * 1e-6,
        static_cast<double>(player.process.import_calls() - calls) / here.seconds(),
        player.process.heap.peak_bytes() / 1024, player.process.threads.deepest_stack());
    player.Close();
  }
}

}  // namespace bench
