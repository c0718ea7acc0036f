#pragma once

#include <stddef.h>

#include <complex>

namespace velmora {

constexpr double kPi = 3.14159265358979323846;

// The discrete Fourier transform, in place; `count` is a power of two. Portable.
void Transform(std::complex<float>* values, size_t count);

}  // namespace velmora
