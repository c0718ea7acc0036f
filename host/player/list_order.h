// Orders of a list, and what is found in it. Portable.
//
// Texts are compared as they are: the caller makes all letters small, as the system does it.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include <string>
#include <string_view>
#include <vector>

namespace velmora {

using Texts = std::vector<std::u16string>;
// What stands where: place i gets what was at order[i].
using ListOrder = std::vector<size_t>;

// As people sort names: numbers by their values ("2" before "10"), a folder before what only begins
// with its name. Negative, 0 or positive.
int CompareNaturally(std::u16string_view a, std::u16string_view b);

// One key for each track; tracks with the same key stay in their order.
ListOrder SortedOrder(const Texts& keys);
ListOrder ReversedOrder(size_t count);
ListOrder ShuffledOrder(size_t count, uint32_t seed);

// The places of the texts that hold every word of `wanted`, in any order; all when there is none.
std::vector<size_t> FindWords(const Texts& texts, std::u16string_view wanted);

}  // namespace velmora
