// The device's library in an emulated process of its own, and the calls that it may make.
#pragma once

#include <stdint.h>

#include <map>
#include <string>
#include <vector>

#include "machine.h"

namespace bench {

using Imports = std::map<std::string, Machine::Handler>;

// A file of the device in the machine's memory, bound to imports; those that are missing end the
// run when they are called.
struct Image {
  uint32_t base;
  uint32_t headers;  // the optional ones
  uint32_t bytes;

  uint32_t Entry(const Machine& machine) const { return base + machine.Word(headers + 16); }
  // Of the directory of that number.
  uint32_t Directory(const Machine& machine, uint32_t number) const {
    return base + machine.Word(headers + 96 + 8 * number);
  }
};
Image LoadImage(Machine& machine, const std::string& path, uint32_t base, const Imports& imports);

// What the library calls while it decodes and filters, by name.
Imports ImportsForSound();

class Library {
 public:
  // Loads it where it wants to be (relocating is the bridge's to try), binds it and attaches.
  explicit Library(const std::string& path, const Imports& imports = ImportsForSound());

  uint32_t GetFeature(uint32_t id) { return machine.Call(get_feature_, {id}); }
  // The address of a virtual operation, and its call as the host makes it: object, then the rest.
  uint32_t Slot(uint32_t object, uint32_t slot) const {
    return machine.Word(machine.Word(object) + 4 * slot);
  }
  uint32_t CallSlot(uint32_t object, uint32_t slot, std::vector<uint32_t> arguments = {});

  // An object of the host: a table whose slots are handlers; slots without one end the run.
  uint32_t MakeObject(const char* name, const std::map<int, Machine::Handler>& slots,
                      int slot_count);

  const Image& image() const { return image_; }
  uint32_t bytes() const { return image_.bytes; }
  uint32_t get_feature() const { return get_feature_; }

  Machine machine;

 private:
  Image image_;
  uint32_t get_feature_;
};

std::vector<uint8_t> ReadFileHere(const std::string& path);

}  // namespace bench
