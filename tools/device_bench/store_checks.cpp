#include <stdlib.h>
#include <string.h>

#include <filesystem>
#include <fstream>

#include "checks.h"
#include "fail.h"
#include "process.h"

namespace bench {
namespace {

// "Skin/MAIN.BMP", deflated: kUnit, 143 times.
constexpr uint8_t kUnit[] = {1, 4, 9, 16, 25, 36, 0};
constexpr uint8_t kArchive[] = {
    0x50, 0x4b, 0x03, 0x04, 0x14, 0x00, 0x00, 0x00, 0x08, 0x00, 0x00, 0x00, 0x21, 0x28, 0x52, 0xa1,
    0x92, 0x82, 0x11, 0x00, 0x00, 0x00, 0xe9, 0x03, 0x00, 0x00, 0x0d, 0x00, 0x00, 0x00, 0x53, 0x6b,
    0x69, 0x6e, 0x2f, 0x4d, 0x41, 0x49, 0x4e, 0x2e, 0x42, 0x4d, 0x50, 0x63, 0x64, 0xe1, 0x14, 0x90,
    0x54, 0x61, 0x60, 0x1c, 0xa5, 0x46, 0xa9, 0x51, 0x6a, 0x18, 0x53, 0x00, 0x50, 0x4b, 0x01, 0x02,
    0x14, 0x03, 0x14, 0x00, 0x00, 0x00, 0x08, 0x00, 0x00, 0x00, 0x21, 0x28, 0x52, 0xa1, 0x92, 0x82,
    0x11, 0x00, 0x00, 0x00, 0xe9, 0x03, 0x00, 0x00, 0x0d, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
    0x00, 0x00, 0x00, 0x00, 0x80, 0x01, 0x00, 0x00, 0x00, 0x00, 0x53, 0x6b, 0x69, 0x6e, 0x2f, 0x4d,
    0x41, 0x49, 0x4e, 0x2e, 0x42, 0x4d, 0x50, 0x50, 0x4b, 0x05, 0x06, 0x00, 0x00, 0x00, 0x00, 0x01,
    0x00, 0x01, 0x00, 0x3b, 0x00, 0x00, 0x00, 0x3c, 0x00, 0x00, 0x00, 0x00, 0x00};

using Bytes = std::vector<uint8_t>;

// A folder of this machine and the library that sees it as the root.
class Device {
 public:
  Device(const std::string& dll, const std::string& folder) : folder_(folder), process(folder) {
    process.machine.RefuseUnaligned();
    process.Load(dll);
    if (process.Attach() == 0) Fail("the library refuses to attach");
  }
  uint32_t Feature(uint32_t id) { return process.CallExport("GetFeature", {id}); }
  // A wide text, or room for one of 260 characters; never given back.
  uint32_t Text(const std::u16string& text = u"") {
    const uint32_t block = process.heap.Take(520);
    process.machine.SetWide(block, text);
    ++blocks;
    return block;
  }
  void Write(const std::string& name, const Bytes& bytes) {
    std::ofstream(folder_ + "/" + name, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<long>(bytes.size()));
  }

 private:
  const std::string folder_;

 public:
  Process process;
  uint32_t blocks = 0;
};

void CheckPresets(Report& report, Device& device) {
  Process& p = device.process;
  Bytes file(31, 0);
  for (uint8_t i = 0; i < 11; ++i) file[20 + i] = static_cast<uint8_t>(2 * i + 1);
  device.Write("Host/presets/Rock.eqf", file);
  device.Write("Host/presets/Short.eqf", Bytes(30, 1));
  const uint32_t presets = device.Feature(4), base = device.Text(u"\\Host");
  const uint32_t room = device.Text(u"untouched");
  report.Equal("presets listed", p.CallSlot(presets, 5, {base}), 2u);
  report.Equal("count of names", p.machine.Word(presets + 804), 2u);
  report.Equal("first name", p.machine.Wide(p.machine.Word(presets + 4)), u"Rock.eqf");
  report.Equal("a free slot", p.machine.Word(presets + 12), 0u);
  report.Equal("found without case", p.CallSlot(presets, 0, {device.Text(u"rock")}), 0u);
  report.Equal("not found", p.CallSlot(presets, 0, {device.Text(u"Pop")}), 0xFFFFFFFFu);
  report.Equal("too short a preset", p.CallSlot(presets, 2, {1, room, base}), 0u);
  report.Equal("its setting", p.machine.Wide(room), u"untouched");
  report.Equal("a preset", p.CallSlot(presets, 2, {0, room, base}), 1u);
  report.Check("its setting", memcmp(p.machine.At(room, 11), file.data() + 20, 11) == 0);
  p.CallSlot(presets, 3, {0, room});
  report.Equal("its name", p.machine.Wide(room), u"Rock");
  p.CallSlot(presets, 4);
  report.Equal("no names", p.machine.Word(presets + 804) | p.machine.Word(presets + 4), 0u);
  report.Equal("an emptied list", p.CallSlot(presets, 2, {0, room, base}), 0u);
}

void CheckSkins(Report& report, Device& device) {
  Process& p = device.process;
  Bytes want;
  for (int i = 0; i < 143; ++i) want.insert(want.end(), std::begin(kUnit), std::end(kUnit));
  device.Write("Host/main.bmp", want);
  Bytes archive(std::begin(kArchive), std::end(kArchive));
  device.Write("good.zip", archive);
  archive[45] ^= 0x10;  // within the member's data
  device.Write("bad.zip", archive);
  const uint32_t skins = device.Feature(5), size = device.Text();
  const struct {
    const char* name;
    int slot;
    const char16_t* path;
    uint32_t number;
    bool found;
  } cases[] = {{"skin from a folder", 0, u"\\Host", 5, true},
               {"no such file", 0, u"\\Host", 4, false},
               {"a number outside", 0, u"\\Host", 18, false},
               {"skin from an archive", 1, u"\\good.zip", 5, true},
               {"no such member", 1, u"\\good.zip", 4, false},
               {"a damaged member", 1, u"\\bad.zip", 5, false},
               {"no archive", 1, u"\\no.zip", 5, false}};
  for (const auto& c : cases) {
    p.machine.SetWord(size, 77);
    const uint32_t block = p.CallSlot(skins, c.slot, {device.Text(c.path), c.number, size});
    const uint32_t bytes = p.machine.Word(size);
    const bool same = block != 0 && bytes == want.size() &&
                      memcmp(p.machine.At(block, bytes), want.data(), bytes) == 0;
    report.Check(c.name, c.found ? same : block == 0 && bytes == 0);
    if (block != 0) p.heap.Give(block);
  }
}

void CheckBookmarks(Report& report, Device& device) {
  Process& p = device.process;
  p.registry[u"SOFTWARE\\Apps\\Ostrabyte Velmora"][u"InstallDir"] = u"\\Host";
  const uint32_t bookmarks = device.Feature(8), song = device.Text(u"\\Host\\main.bmp");
  const uint32_t path = device.Text(), seconds = device.Text();
  report.Equal("no file, no bookmarks", p.CallSlot(bookmarks, 3), 0u);
  report.Equal("add", p.CallSlot(bookmarks, 0, {song, 65, device.Text(u"Caf\u00e9")}), 1u);
  p.CallSlot(bookmarks, 6, {device.Text(u"\\gone.ogg"), static_cast<uint32_t>(-3), 0});
  const std::u16string want =
      u"\\gone.ogg\r\n-3\r\n(Last Played) \r\n\\Host\\main.bmp\r\n65\r\nCaf\u00e9\r\n";
  const Bytes file = ReadFileHere(p.folder + "/Host/bookmarks.dat");
  report.Check("the file, byte for byte", file.size() == 2 * want.size() &&
                                              memcmp(file.data(), want.data(), file.size()) == 0);
  report.Equal("loaded again", p.CallSlot(bookmarks, 3), 2u);
  report.Equal("last played, whose file is gone", p.CallSlot(bookmarks, 7, {path, seconds}), 0u);
  report.Equal("a bookmark", p.CallSlot(bookmarks, 2, {1, path, 0, seconds}), 1u);
  report.Equal("its path", p.machine.Wide(path), u"\\Host\\main.bmp");
  report.Equal("its position", p.machine.Word(seconds), 65u);
  report.Equal("outside the list", p.CallSlot(bookmarks, 2, {2, path, 0, seconds}), 0u);
  const uint32_t list = p.machine.Word(bookmarks + 16);
  report.Equal("count", p.machine.Word(bookmarks + 20), 2u);
  report.Equal("capacity", p.machine.Word(bookmarks + 24), 50u);
  report.Equal("path", p.machine.Wide(p.machine.Word(list + 12)), u"\\Host\\main.bmp");
  report.Equal("description", p.machine.Wide(p.machine.Word(list + 16)), u"Caf\u00e9");
  report.Equal("position", p.machine.Word(list + 20), 65u);
  report.Equal("a free slot", p.machine.Word(list + 24) | p.machine.Word(list + 28), 0u);
  report.Equal("sort column", p.machine.Word(bookmarks + 76), 0u);
  report.Equal("sort direction", p.machine.Word(bookmarks + 80), 1u);
  std::filesystem::rename(p.folder + "/Host/bookmarks.dat", p.folder + "/Host/bookmarks.da$");
  device.Write("Host/bookmarks.dat", {});
  report.Equal("a finished file that was not put in place", p.CallSlot(bookmarks, 3), 2u);
  report.Check("it is now", !std::filesystem::exists(p.folder + "/Host/bookmarks.da$"));
}

}  // namespace

void CheckStores(Report& report, const std::string& dll) {
  char folder[] = "/tmp/device_bench.XXXXXX";
  if (!mkdtemp(folder)) Fail("cannot make a folder");
  std::filesystem::create_directories(std::string(folder) + "/Host/presets");
  Device device(dll, folder);
  CheckPresets(report, device);
  CheckSkins(report, device);
  CheckBookmarks(report, device);
  report.Equal("detach", device.process.Detach(), 1u);
  report.Equal("blocks that the library leaves", device.process.heap.blocks(), device.blocks);
  std::filesystem::remove_all(folder);
}

}  // namespace bench
