#include <fstream>
#include <iterator>

#include "checks.h"
#include "fail.h"
#include "process.h"

namespace bench {
namespace {

constexpr char16_t kSettings[] = u"SOFTWARE\\Ostrabyte\\Velmora";

}  // namespace

std::vector<uint8_t> ReadFileHere(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(stream), {}};
  if (bytes.empty()) Fail("cannot read %s", path.c_str());
  return bytes;
}

void CheckFeatures(Report& report, const std::string& dll) {
  Process process(".");
  process.machine.RefuseUnaligned();
  process.Load(dll);
  report.Equal("attach", process.Attach(), 1u);
  report.Check("the settings' key was opened", process.registry.count(kSettings) == 1);
  report.Check("only the optional signal-processing library was asked for",
               process.libraries_asked == std::vector<std::u16string>{u"Utility.dll"});
  const auto feature = [&](int32_t id) {
    return process.CallExport("GetFeature", {static_cast<uint32_t>(id)});
  };
  const uint32_t version = feature(21);
  report.Equal("version text", process.machine.Wide(version),
               u"Velmora Feature Pack\rversion 2.51 installed.");
  report.Equal("its buffer is the same each time", feature(21), version);
  for (const int32_t id : {-1, 0, 2, 10, 11, 15, 20, 22, 1000, INT32_MAX, INT32_MIN}) {
    report.Equal("unknown id " + std::to_string(id), feature(id), 0u);
  }
  for (const int32_t id : {4, 5, 8, 9}) {
    const uint32_t object = feature(id);
    report.Check("an object of its own for id " + std::to_string(id),
                 object != 0 && object == feature(id) && object != feature(3));
  }
  report.Equal("no Windows Media plug-in where components cannot be used", feature(6), 0u);
  const uint32_t vorbis = feature(3);
  report.Check("the Ogg Vorbis plug-in", vorbis != 0 && vorbis == feature(3));
  report.Equal("its state before a file is opened", process.CallSlot(vorbis, 6), 1u);
  report.Equal("its length", process.CallSlot(vorbis, 3), 0u);
  report.Equal("its play", process.CallSlot(vorbis, 12), 0u);
  report.Equal("no Windows Media without COM", feature(6), 0u);
  const uint32_t effects = feature(9);
  report.Check("the effects", effects != 0 && effects == feature(9));

  process.registry[kSettings][u"Language"] = 1031;
  report.Equal("switching to a language that is not there", feature(7), 0u);
  report.Equal("the version text is the built-in one", process.machine.Wide(feature(21)),
               u"Velmora Feature Pack\rversion 2.51 installed.");
  report.Equal("detach", process.Detach(), 1u);
  report.Equal("blocks left on the heap", process.heap.blocks(), 0u);
  report.Equal("events left", process.events.size(), size_t{0});
}

}  // namespace bench
