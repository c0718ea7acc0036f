#include "library.h"

#include <string.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "report.h"

namespace bench {
namespace {

constexpr uint32_t kAttach = 1;
constexpr uint32_t kExports = 0, kImports = 1, kRelocations = 5;  // directories
constexpr uint32_t kHeaderBytes = 0x1000;

Machine::Handler Missing(const std::string& name) {
  return [name](Machine& machine) -> uint32_t {
    Fail("%s is called (from %#x), which is not here", name.c_str(),
         machine.Register(UC_ARM_REG_LR));
  };
}

}  // namespace

std::vector<uint8_t> ReadFileHere(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(stream), {}};
  if (bytes.empty()) Fail("cannot read %s", path.c_str());
  return bytes;
}

namespace {

// Words that hold addresses: pages, each with its offsets.
void Relocate(Machine& machine, const Image& image, uint32_t wanted) {
  constexpr uint32_t kSize = 96 + 8 * kRelocations + 4, kWord = 3;
  uint32_t page = image.Directory(machine, kRelocations);
  const uint32_t end = page + machine.Word(image.headers + kSize);
  for (; page < end; page += machine.Word(page + 4)) {
    for (uint32_t at = page + 8; at < page + machine.Word(page + 4); at += 2) {
      const uint32_t entry = machine.Word(at) & 0xFFFF;
      if (entry >> 12 != kWord) continue;
      const uint32_t word = image.base + machine.Word(page) + (entry & 0xFFF);
      machine.SetWord(word, machine.Word(word) - wanted + image.base);
    }
  }
}

void Bind(Machine& machine, const Image& image, const Imports& imports) {
  for (uint32_t table = image.Directory(machine, kImports); machine.Word(table + 12) != 0;
       table += 20) {
    uint32_t slot = image.base + machine.Word(table + 16), name = image.base + machine.Word(table);
    for (; machine.Word(name) != 0; name += 4, slot += 4) {
      const std::string text = machine.Text(image.base + machine.Word(name) + 2);
      const auto found = imports.find(text);
      machine.SetWord(slot,
                      machine.AddStub(found != imports.end() ? found->second : Missing(text)));
    }
  }
}

}  // namespace

// check_image.py has found the file to be in order.
Image LoadImage(Machine& machine, const std::string& path, uint32_t base, const Imports& imports) {
  const std::vector<uint8_t> file = ReadFileHere(path);
  const auto copy = [&](uint32_t rva, uint32_t offset, uint32_t bytes) {
    if (offset > file.size() || bytes > file.size() - offset) Fail("%s is damaged", path.c_str());
    memcpy(machine.At(base + rva, bytes), file.data() + offset, bytes);
  };
  copy(0, 0, kHeaderBytes);
  const uint32_t pe = base + machine.Word(base + 0x3C);
  const Image image = {base, pe + 24, machine.Word(pe + 24 + 56)};
  const uint32_t sections = machine.Word(pe + 4) >> 16;
  for (uint32_t i = 0; i < sections; ++i) {
    const uint32_t section = image.headers + (machine.Word(pe + 20) & 0xFFFF) + 40 * i;
    copy(machine.Word(section + 12), machine.Word(section + 20),
         std::min(machine.Word(section + 8), machine.Word(section + 16)));
  }
  const uint32_t wanted = machine.Word(image.headers + 28);
  if (wanted != base) Relocate(machine, image, wanted);
  Bind(machine, image, imports);
  return image;
}

Library::Library(const std::string& path, const Imports& imports)
    : image_(LoadImage(machine, path, Machine::kBase, imports)) {
  machine.CountInstructions(image_.base, image_.bytes);
  if (machine.Call(image_.Entry(machine), {image_.base, kAttach, 0}) == 0)
    Fail("the library refuses to attach");
  // Its one export.
  const uint32_t exports = image_.Directory(machine, kExports);
  get_feature_ = image_.base + machine.Word(image_.base + machine.Word(exports + 28));
}

uint32_t Library::CallSlot(uint32_t object, uint32_t slot, std::vector<uint32_t> arguments) {
  arguments.insert(arguments.begin(), object);
  return machine.Call(Slot(object, slot), arguments);
}

uint32_t Library::MakeObject(const char* name, const std::map<int, Machine::Handler>& slots,
                             int slot_count) {
  const uint32_t table = machine.Allocate(static_cast<uint32_t>(4 * slot_count));
  const uint32_t object = machine.Allocate(16);
  machine.SetWord(object, table);
  for (int i = 0; i < slot_count; ++i) {
    const auto found = slots.find(i);
    const std::string slot = std::string(name) + " slot " + std::to_string(i);
    machine.SetWord(table + 4 * static_cast<uint32_t>(i),
                    machine.AddStub(found != slots.end() ? found->second : Missing(slot)));
  }
  return object;
}

}  // namespace bench
