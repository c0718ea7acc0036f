#include "host_reader.h"

#include <string.h>

#include <algorithm>

namespace bench {

HostReader::HostReader(Process& process, std::vector<uint8_t> bytes) : bytes_(std::move(bytes)) {
  const auto yes = [](Process&) { return 1u; };
  object_ = process.MakeObject("MediaReader",
                               {{1, [this](Process& p) { return Seek(p); }},
                                {2, [this](Process& p) { return Read(p); }},
                                {3, yes},
                                {4,
                                 [this](Process&) {
                                   position_ = 0;
                                   return 1u;
                                 }},
                                {5, yes}},
                               6);
}

// The 64-bit offset in two words right behind the object, then the origin, as the device's
// compilers pass them; the answer in r0 and r1.
uint32_t HostReader::Seek(Process& p) {
  int64_t target = static_cast<int64_t>(uint64_t{p.Argument(2)} << 32 | p.Argument(1));
  const uint32_t origin = p.Argument(3);
  if (origin == 1) target += position_;
  if (origin == 2) target += static_cast<int64_t>(bytes_.size());
  if (target < 0 || target > static_cast<int64_t>(bytes_.size())) {
    target = INT64_MAX;
  } else {
    position_ = target;
  }
  p.machine.SetRegister(UC_ARM_REG_R1, static_cast<uint32_t>(target >> 32));
  return static_cast<uint32_t>(target);
}

uint32_t HostReader::Read(Process& p) {
  const uint32_t left = static_cast<uint32_t>(bytes_.size() - static_cast<size_t>(position_));
  const uint32_t bytes = std::min(p.Argument(2), left);
  if (bytes != 0) memcpy(p.machine.At(p.Argument(1), bytes), &bytes_[position_], bytes);
  position_ += bytes;
  p.machine.SetWord(p.Argument(3), bytes);
  return 1;
}

}  // namespace bench
