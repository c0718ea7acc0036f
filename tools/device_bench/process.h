// One emulated process with one DLL of ours in it, and the calls that the DLL may make.
#pragma once

#include <stdint.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "dll_file.h"
#include "guest_heap.h"
#include "machine.h"
#include "threads.h"

namespace bench {

class Process {
 public:
  // Serves one import; the result is r0.
  using Import = std::function<uint32_t(Process&)>;

  // The folder is not looked at: no file is opened but the one that the reader holds.
  explicit Process(const std::string& folder);

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

  uint32_t NewHandle() { return next_handle_ += 4; }

  Machine machine;
  GuestHeap heap;
  Threads threads;

  struct Message {
    uint32_t window, message, wparam, lparam;
  };
  std::vector<Message> messages;

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

// What the library calls while it decodes and filters.
void ProvideImports(Process& process);

}  // namespace bench
