#pragma once

#include <windows.h>

#include <stdint.h>

#include "base/windows/unique_handle.h"

namespace kelvo {

// A RIFF WAVE file whose lengths are right after every block, so that it is whole whenever the
// process ends.
class WavFile {
 public:
  // Replaces an existing file. `format` is the 16 bytes of a PCM format.
  [[nodiscard]] bool Create(const wchar_t* path, const uint8_t (&format)[16]) noexcept;
  // False when the disk or the format's 4 GB are full; the file then ends with an earlier block.
  [[nodiscard]] bool Append(const void* data, uint32_t bytes) noexcept;

 private:
  bool WriteAt(uint32_t offset, const void* data, uint32_t bytes) noexcept;

  UniqueFile file_;
  uint32_t data_bytes_ = 0;
};

}  // namespace kelvo
