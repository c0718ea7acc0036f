// Functions that the compiler's code and the C libraries that we link call, and that the device's
// own runtime library has under another name or not at all.
#include <stddef.h>
#include <string.h>

extern "C" {

void __aeabi_memcpy(void* to, const void* from, size_t bytes) {
  memcpy(to, from, bytes);
}
void __aeabi_memcpy4(void* to, const void* from, size_t bytes) {
  memcpy(to, from, bytes);
}
void __aeabi_memmove(void* to, const void* from, size_t bytes) {
  memmove(to, from, bytes);
}
void __aeabi_memset(void* to, size_t bytes, int value) {
  memset(to, value, bytes);
}
void __aeabi_memclr(void* to, size_t bytes) {
  memset(to, 0, bytes);
}

// A division by zero gives the dividend back.
int __aeabi_idiv0(int result) {
  return result;
}
long long __aeabi_ldiv0(long long result) {
  return result;
}

// Fills the slots of abstract classes; nobody gets here.
void __cxa_pure_virtual() {}

// Runs of the loop must not be turned into a call of the function itself.
__attribute__((optimize("no-tree-loop-distribute-patterns"))) void* memchr(const void* from,
                                                                           int value,
                                                                           size_t bytes) {
  const unsigned char* at = static_cast<const unsigned char*>(from);
  for (; bytes > 0; --bytes, ++at) {
    if (*at == static_cast<unsigned char>(value)) return const_cast<unsigned char*>(at);
  }
  return nullptr;
}

// The device's C library sets no error numbers. The library itself sets this word alone where a
// stream gives nothing any more, for the decoder, which looks at once and clears it before each
// read.
int* _errno() {
  static int number;
  return &number;
}
}
