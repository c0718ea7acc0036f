#include "host/player/spectrum.h"

#include <math.h>

#include <utility>

namespace velmora {
namespace {

void SortByReversedBits(std::complex<float>* values, size_t count) {
  size_t reversed = 0;
  for (size_t i = 1; i < count; ++i) {
    size_t bit = count >> 1;
    for (; reversed & bit; bit >>= 1) reversed ^= bit;
    reversed |= bit;
    if (i < reversed) std::swap(values[i], values[reversed]);
  }
}

}  // namespace

void Transform(std::complex<float>* values, size_t count) {
  SortByReversedBits(values, count);
  for (size_t half = 1; half < count; half *= 2) {
    const double angle = -kPi / static_cast<double>(half);
    for (size_t k = 0; k < half; ++k) {
      const float re = static_cast<float>(cos(angle * static_cast<double>(k)));
      const float im = static_cast<float>(sin(angle * static_cast<double>(k)));
      for (size_t i = k; i < count; i += 2 * half) {
        const std::complex<float> a = values[i], b = values[i + half];
        // Written out: the library's product looks for infinities.
        const std::complex<float> turned(b.real() * re - b.imag() * im,
                                         b.real() * im + b.imag() * re);
        values[i] = a + turned;
        values[i + half] = a - turned;
      }
    }
  }
}

}  // namespace velmora
