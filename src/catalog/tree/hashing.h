// What the tables by hash in this folder share. Thousands of files are grouped and looked up by
// their texts; comparing each with each would take seconds. A hash here only makes it quick: what
// has the same one is compared all the same.
#pragma once

#include <stddef.h>
#include <stdint.h>

namespace kelvo {

// The slots of a table for so many things: a power of two, so that a mask finds one.
constexpr size_t SlotsFor(size_t things) noexcept {
  size_t slots = 1;
  while (slots < things) slots *= 2;
  return slots;
}

inline constexpr uint32_t kHashSeed = 2166136261u;

// Adds a character to the hash of those before it; whoever does not regard case folds it first, so
// that what is equal has the same hash.
constexpr uint32_t ExtendedHash(uint32_t hash, uint32_t c) noexcept {
  return (hash ^ c) * 16777619u;
}

// Of a handle, of which the lowest bits are always the same.
constexpr uint32_t HashOfHandle(uintptr_t handle) noexcept {
  return ExtendedHash(kHashSeed, static_cast<uint32_t>(handle >> 3)) >> 4;
}

}  // namespace kelvo
