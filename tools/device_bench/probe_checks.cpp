#include <stdlib.h>

#include <filesystem>
#include <fstream>

#include "checks.h"
#include "fail.h"
#include "process.h"

namespace bench {

void CheckProbe(Report& report, const std::string& dll) {
  char folder[] = "/tmp/device_bench.XXXXXX";
  if (!mkdtemp(folder)) Fail("cannot make a folder");
  Process process(folder);
  process.machine.RefuseUnaligned();
  process.Load(dll);
  report.Check("relocations were applied", process.dll().relocations() > 0);
  report.Equal("attach", process.Attach(), 1u);
  const uint32_t probe = process.CallExport("GetFeature", {1});
  const uint32_t trace = process.CallSlot(probe, 0);
  report.Equal("constructors before the attach handler", process.machine.Text(trace), "abc+");

  uint32_t low = 0, high = 0, origin = 0;
  const uint32_t host = process.MakeObject("Seek",
                                           {{1,
                                             [&](Process& p) {
                                               low = p.Argument(1);
                                               high = p.Argument(2);
                                               origin = p.Argument(3);
                                               p.machine.SetRegister(UC_ARM_REG_R1, 1);
                                               return 0x80000000u;
                                             }}},
                                           2);
  report.Equal("a 64-bit answer through soft floating point",
               process.CallSlot(probe, 1, {host, 0x23456789, 0xFFFFFFFE}),
               static_cast<uint32_t>(INT32_MAX));
  report.Check("64-bit argument in two words",
               low == 0x23456789 && high == 0xFFFFFFFE && origin == 2);
  report.Equal("the jump out of 1 call", process.CallSlot(probe, 2, {1}), 7u);
  report.Equal("the jump out of 200 calls", process.CallSlot(probe, 2, {200}), 7u);
  report.Equal("a thread slot", process.CallSlot(probe, 3, {0x1234}), 0x1234u);
  report.Equal("64-bit division", process.CallSlot(probe, 4, {5, 3, 7}),
               static_cast<uint32_t>(((uint64_t{3} << 32) + 5) / 7));
  report.Equal("an event that is set", process.CallSlot(probe, 5, {1}), 0u);
  report.Equal("an event that is not", process.CallSlot(probe, 5, {0}), 0x102u);

  std::ofstream(std::string(folder) + "/one.ogg") << "12345";
  std::ofstream(std::string(folder) + "/two.ogg") << "123456789";
  std::ofstream(std::string(folder) + "/three.mp3") << "";
  std::filesystem::create_directory(std::string(folder) + "/four.ogg");
  const uint32_t names = process.heap.Take(2000);
  const uint32_t pattern = process.heap.Take(100);
  process.machine.SetWide(pattern, u"\\*.ogg");
  report.Equal("files and folders listed", process.CallSlot(probe, 6, {pattern, names, 1000}), 3u);
  report.Equal("their names", process.machine.Wide(names), u"four.ogg/,one.ogg,two.ogg,");
  process.machine.SetWide(pattern, u"\\two.ogg");
  report.Equal("a file's bytes from the third on", process.CallSlot(probe, 7, {pattern, names, 2}),
               7u);
  report.Check("the bytes", process.machine.Text(names).substr(0, 7) == "3456789");
  process.machine.SetWide(pattern, u"\\no.ogg");
  report.Equal("a missing file", process.CallSlot(probe, 7, {pattern, names, 0}), 0xFFFFFFFFu);

  report.Equal("detach", process.Detach(), 1u);
  report.Equal("destructors in reverse order after the detach handler", process.machine.Text(trace),
               "abc+-CBA");
  std::filesystem::remove_all(folder);
}

void CauseFault(const std::string& dll, uint32_t kind) {
  Process process(".");
  process.machine.RefuseUnaligned();
  process.Load(dll);
  process.Attach();
  process.CallSlot(process.CallExport("GetFeature", {1}), 8, {kind});
}

}  // namespace bench
