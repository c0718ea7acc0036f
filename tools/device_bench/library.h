// The device's library in an emulated process of its own, and the calls that it may make.
#pragma once

#include <stdint.h>

#include <map>
#include <string>
#include <vector>

#include "machine.h"

namespace bench {

class Library {
 public:
  // Loads it where it wants to be (relocating is the bridge's to try), binds it and attaches.
  explicit Library(const std::string& path);

  uint32_t GetFeature(uint32_t id) { return machine.Call(get_feature_, {id}); }
  // The address of a virtual operation, and its call as the host makes it: object, then the rest.
  uint32_t Slot(uint32_t object, uint32_t slot) const {
    return machine.Word(machine.Word(object) + 4 * slot);
  }
  uint32_t CallSlot(uint32_t object, uint32_t slot, std::vector<uint32_t> arguments = {});

  // An object of the host: a table whose slots are handlers; slots without one end the run.
  uint32_t MakeObject(const char* name, const std::map<int, Machine::Handler>& slots,
                      int slot_count);

  uint32_t bytes() const { return bytes_; }

  Machine machine;

 private:
  void Bind();

  std::map<std::string, Machine::Handler> imports_;
  uint32_t headers_ = 0;  // the optional ones
  uint32_t bytes_ = 0;
  uint32_t get_feature_ = 0;
};

std::vector<uint8_t> ReadFileHere(const std::string& path);

// What the library calls while it decodes and filters, by name.
std::map<std::string, Machine::Handler> ImportsForSound();

}  // namespace bench
