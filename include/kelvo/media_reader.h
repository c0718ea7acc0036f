// The host's access to the bytes of one media file.
//
// Generated from tools/contract/media_reader.txt.
#pragma once

#include "kelvo/types.h"

namespace kelvo {

enum SeekOrigin : uint32_t {
  kSeekStart = 0,
  kSeekCurrent = 1,
  kSeekEnd = 2,
};

// What Seek answers when it fails. Any other answer, -1 included, counts as a success.
constexpr int64_t kSeekFailed = 0x7FFFFFFFFFFFFFFF;

// Implemented by the host. While a file plays the decoding thread reads, and so does the plug-in's
// SeekMs, on the thread that called it; never both at once. All other calls are made on the thread
// that called the plug-in. Slot 0 is not called; the library never deletes the object.
class MediaReader {
 public:
  virtual void Reserved0() noexcept {}

  // Slot 1. Moves the read position and returns the new one, or kSeekFailed.
#ifdef KELVO_CE_ARM
  // The device's compilers pass a 64-bit argument in the next two registers, ours would skip one to
  // an even register: here it travels as two words.
  virtual int64_t SeekWords(uint32_t low, uint32_t high, uint32_t origin) noexcept = 0;
  int64_t Seek(int64_t offset, uint32_t origin) noexcept {
    const uint64_t bits = static_cast<uint64_t>(offset);
    return SeekWords(static_cast<uint32_t>(bits), static_cast<uint32_t>(bits >> 32), origin);
  }
#else
  virtual int64_t Seek(int64_t offset, uint32_t origin) noexcept = 0;
#endif

  // Slot 2. Reads up to `bytes` bytes and stores how many; 0 at the end. Non-zero on success.
  virtual int32_t Read(void* destination, uint32_t bytes, uint32_t* bytes_read) noexcept = 0;

  // Slot 3. Closes the file. Called twice when a playing file is closed (once as the decoder lets
  // go of it, once by the plug-in), so repeating it must be harmless; the plug-in's Close returns
  // the last result.
  virtual int32_t Close() noexcept = 0;

  // Slot 4. Opens a file; path and mode are those given to the plug-in's Open. Non-zero on success.
  virtual int32_t Open(const wchar_t* path, uint32_t mode) noexcept = 0;

  // Slot 5. Asked before a file is closed, with the two words given to the plug-in's Close; 0 keeps
  // it open.
  virtual int32_t Release(HostWord a, HostWord b) noexcept = 0;

 protected:
  ~MediaReader() = default;
};

}  // namespace kelvo
