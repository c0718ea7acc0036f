// The place of a virtual operation in its class's table, as the compiler has numbered it.
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <string.h>

namespace kelvo::test {

template <class Class, class Result, class... Arguments>
int MemberSlot(Result (Class::*member)(Arguments...) noexcept) {
  // Compilers of the GNU kind: the offset in the table, plus 1 to tell it from an address.
  uintptr_t word;
  memcpy(&word, &member, sizeof(word));
  return word % 2 == 1 ? static_cast<int>(word / sizeof(void*)) : -1;
}

}  // namespace kelvo::test
