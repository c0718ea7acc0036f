// A host that plays one file through the library's Ogg Vorbis plug-in, as fast as it comes.
#pragma once

#include <stdint.h>

#include <functional>
#include <vector>

#include "library.h"

namespace bench {

class Player {
 public:
  Player(Library& library, std::vector<uint8_t> file);

  void Open();
  void Play();  // to the end

  double seconds() const { return static_cast<double>(pcm_bytes_) / (2.0 * channels_) / rate_; }
  // Called with the address and length of every block of sound.
  std::function<void(uint32_t samples, uint32_t bytes)> on_block;

 private:
  uint32_t MakeReader();
  uint32_t MakeOutput();
  uint32_t Seek(Machine& machine);
  uint32_t Read(Machine& machine);
  uint32_t OpenOutput(Machine& machine);
  uint32_t Write(Machine& machine);

  Library& library_;
  const std::vector<uint8_t> file_;
  int64_t position_ = 0;
  uint32_t header_ = 0;  // of the one buffer
  uint32_t channels_ = 1, rate_ = 1;
  uint64_t pcm_bytes_ = 0;
  uint32_t plugin_;
};

}  // namespace bench
