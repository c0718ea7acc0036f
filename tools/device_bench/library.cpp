#include "library.h"

#include <string.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "report.h"

namespace bench {
namespace {

constexpr uint32_t kAttach = 1;
constexpr uint32_t kDirectories = 96;  // within the optional headers
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

// check_image.py has found the file to be in order.
Library::Library(const std::string& path) : imports_(ImportsForSound()) {
  const std::vector<uint8_t> file = ReadFileHere(path);
  constexpr uint32_t kBase = Machine::kBase;
  const auto copy = [&](uint32_t rva, uint32_t offset, uint32_t bytes) {
    if (offset > file.size() || bytes > file.size() - offset) Fail("%s is damaged", path.c_str());
    memcpy(machine.At(kBase + rva, bytes), file.data() + offset, bytes);
  };
  copy(0, 0, kHeaderBytes);
  const uint32_t pe = kBase + machine.Word(kBase + 0x3C);
  headers_ = pe + 24;
  if (machine.Word(headers_ + 28) != kBase) Fail("%s wants another address", path.c_str());
  bytes_ = machine.Word(headers_ + 56);
  const uint32_t sections = machine.Word(pe + 4) >> 16;
  for (uint32_t i = 0; i < sections; ++i) {
    const uint32_t section = headers_ + (machine.Word(pe + 20) & 0xFFFF) + 40 * i;
    copy(machine.Word(section + 12), machine.Word(section + 20),
         std::min(machine.Word(section + 8), machine.Word(section + 16)));
  }
  Bind();
  machine.CountInstructions(kBase, bytes_);
  if (machine.Call(kBase + machine.Word(headers_ + 16), {kBase, kAttach, 0}) == 0)
    Fail("the library refuses to attach");
}

void Library::Bind() {
  constexpr uint32_t kBase = Machine::kBase;
  uint32_t table = kBase + machine.Word(headers_ + kDirectories + 8);
  for (; machine.Word(table + 12) != 0; table += 20) {
    uint32_t slot = kBase + machine.Word(table + 16), name = kBase + machine.Word(table);
    for (; machine.Word(name) != 0; name += 4, slot += 4) {
      const std::string text = machine.Text(kBase + machine.Word(name) + 2);
      const auto found = imports_.find(text);
      machine.SetWord(slot,
                      machine.AddStub(found != imports_.end() ? found->second : Missing(text)));
    }
  }
  // Its one export.
  const uint32_t exports = kBase + machine.Word(headers_ + kDirectories);
  get_feature_ = kBase + machine.Word(kBase + machine.Word(exports + 28));
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
