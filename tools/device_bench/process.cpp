#include "process.h"

#include <string.h>

#include "fail.h"

namespace bench {
namespace {

// Not the preferred base, so that every relocation is put to the test.
constexpr uint32_t kBase = 0x11230000;
constexpr uint32_t kAttach = 1;
constexpr uint32_t kDetach = 0;

}  // namespace

Process::Process(const std::string&) : heap(machine), threads(machine) {
  ProvideImports(*this);
}

uint32_t Process::MakeStub(const std::string& name, Import import) {
  if (!import) {
    import = [name](Process & process)
                 ->uint32_t {
                   Fail("%s is called (from %#x) but not provided", name.c_str(),
                        process.machine.Register(UC_ARM_REG_LR));
  };
}
return machine.AddStub([this, import = std::move(import)] {
  ++import_calls_;
  machine.SetRegister(UC_ARM_REG_R0, import(*this));
});
}  // namespace bench

void Process::Load(const std::string& path) {
  dll_ = std::make_unique<DllFile>(path);
  dll_->MoveTo(kBase);
  base_ = kBase;
  const uint32_t bytes = (dll_->size() + 0xFFF) & ~0xFFFu;
  machine.Map(kBase, bytes);
  memcpy(machine.At(kBase, dll_->size()), dll_->memory().data(), dll_->size());
  for (const DllFile::Import& import : dll_->imports()) {
    const auto found = provided_.find(import.name);
    machine.SetWord(kBase + import.slot,
                    MakeStub(import.name, found != provided_.end() ? found->second : nullptr));
  }
  machine.CountInstructions(kBase, bytes);
}

uint32_t Process::Attach() {
  return Call(base_ + dll_->entry(), {base_, kAttach, 0});
}
uint32_t Process::Detach() {
  return Call(base_ + dll_->entry(), {base_, kDetach, 0});
}

uint32_t Process::Call(uint32_t function, const std::vector<uint32_t>& arguments) {
  return threads.Call(function, arguments);
}

uint32_t Process::CallExport(const std::string& name, const std::vector<uint32_t>& arguments) {
  return Call(base_ + dll_->Export(name), arguments);
}

uint32_t Process::CallSlot(uint32_t object, int slot, std::vector<uint32_t> arguments) {
  arguments.insert(arguments.begin(), object);
  const uint32_t table = machine.Word(object);
  return Call(machine.Word(table + 4 * static_cast<uint32_t>(slot)), arguments);
}

uint32_t Process::MakeObject(const char* name, const std::map<int, Import>& slots, int slot_count) {
  const uint32_t table = heap.Take(static_cast<uint32_t>(4 * slot_count));
  const uint32_t object = heap.TakeZeroed(16);
  machine.SetWord(object, table);
  for (int slot = 0; slot < slot_count; ++slot) {
    const auto found = slots.find(slot);
    machine.SetWord(table + 4 * static_cast<uint32_t>(slot),
                    MakeStub(std::string(name) + " slot " + std::to_string(slot),
                             found != slots.end() ? found->second : nullptr));
  }
  return object;
}

}  // namespace bench
