#pragma once

#include <stdlib.h>

namespace kelvo::fuzz {

// A broken contract ends the program, which is what a fuzzer looks for.
inline void Require(bool holds) {
  if (!holds) abort();
}

}  // namespace kelvo::fuzz
