// One emulated process with one DLL of ours in it, and the calls that the DLL may make.
#pragma once

#include <stdint.h>

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "dll_file.h"
#include "guest_heap.h"
#include "machine.h"
#include "scheduler.h"

namespace bench {

class Process {
 public:
  // Serves one import; the result is r0.
  using Import = std::function<uint32_t(Process&)>;

  // `folder` holds the files that the DLL sees below "\".
  explicit Process(std::string folder);

  // Loads, relocates and binds the DLL. An import that nobody provides is bound to a stub that
  // ends the run with its name.
  void Load(const std::string& path);
  // Calls the entry point as the system does. Non-zero on success.
  uint32_t Attach();
  uint32_t Detach();

  uint32_t Call(uint32_t function, const std::vector<uint32_t>& arguments);
  uint32_t CallExport(const std::string& name, const std::vector<uint32_t>& arguments);
  // A virtual operation, as the host calls it: object, then the arguments.
  uint32_t CallSlot(uint32_t object, int slot, std::vector<uint32_t> arguments = {});

  // An object of the host: a table whose slots are handlers; slots without one end the run.
  uint32_t MakeObject(const char* name, const std::map<int, Import>& slots, int slot_count);

  void Provide(const std::string& name, Import import) { provided_[name] = std::move(import); }
  uint32_t Argument(int index) { return machine.Argument(index); }

  // Objects behind handles: an event is signalled or not, a thread has ended or not.
  struct Event {
    bool manual;
    bool signalled;
  };
  uint32_t NewHandle() { return next_handle_ += 4; }

  Machine machine;
  GuestHeap heap;
  Scheduler threads;
  const std::string folder;

  std::map<uint32_t, Event> events;
  std::map<uint32_t, uint32_t> thread_handles;  // handle, thread
  // A value's bytes as they are stored; texts with their terminator.
  struct RegistryValue {
    RegistryValue() = default;
    RegistryValue(uint32_t number);
    RegistryValue(const char16_t* text);
    uint32_t type = 0;
    std::vector<uint8_t> bytes;
  };
  std::map<std::u16string, std::map<std::u16string, RegistryValue>> registry;
  std::vector<std::u16string> libraries_asked;  // by LoadLibraryW
  struct Message {
    uint32_t window, message, wparam, lparam;
  };
  std::vector<Message> messages;
  std::set<uint32_t> priorities;  // that threads were given

  uint32_t base() const { return base_; }
  const DllFile& dll() const { return *dll_; }
  uint64_t import_calls() const { return import_calls_; }

 private:
  uint32_t MakeStub(const std::string& name, Import import);

  std::map<std::string, Import> provided_;
  std::unique_ptr<DllFile> dll_;
  uint32_t base_ = 0;
  uint32_t next_handle_ = 0x1000;
  uint64_t import_calls_ = 0;
};

// The groups of imports.
void ProvideMemory(Process& process);
void ProvideFiles(Process& process);
void ProvideSynchronisation(Process& process);
void ProvideSystem(Process& process);

}  // namespace bench
