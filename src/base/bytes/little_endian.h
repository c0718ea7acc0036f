// Every file format here is little-endian; bytes are decoded one by one, never by casting a buffer
// to a struct (ARM faults on unaligned words).
#pragma once

#include <stdint.h>

namespace kelvo {

inline uint16_t LoadU16(const void* p) noexcept {
  const uint8_t* b = static_cast<const uint8_t*>(p);
  return static_cast<uint16_t>(b[0] | b[1] << 8);
}

inline uint32_t LoadU32(const void* p) noexcept {
  const uint8_t* b = static_cast<const uint8_t*>(p);
  return b[0] | b[1] << 8 | b[2] << 16 | static_cast<uint32_t>(b[3]) << 24;
}

inline uint64_t LoadU64(const void* p) noexcept {
  const uint8_t* b = static_cast<const uint8_t*>(p);
  return LoadU32(b) | static_cast<uint64_t>(LoadU32(b + 4)) << 32;
}

inline void StoreU16(void* p, uint16_t v) noexcept {
  uint8_t* b = static_cast<uint8_t*>(p);
  b[0] = static_cast<uint8_t>(v);
  b[1] = static_cast<uint8_t>(v >> 8);
}

inline void StoreU32(void* p, uint32_t v) noexcept {
  uint8_t* b = static_cast<uint8_t*>(p);
  StoreU16(b, static_cast<uint16_t>(v));
  StoreU16(b + 2, static_cast<uint16_t>(v >> 16));
}

}  // namespace kelvo
