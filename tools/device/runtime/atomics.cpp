// The compiler's atomic operations. The device's processor has one core and no instruction for
// them; its core library has.
extern "C" {

long CoreIncrement(volatile long* word) __asm__("InterlockedIncrement");
long CoreDecrement(volatile long* word) __asm__("InterlockedDecrement");
long CoreTestExchange(volatile long* word, long expected,
                      long next) __asm__("InterlockedTestExchange");

int AddAndFetch(volatile void* word, int addend) __asm__("__sync_add_and_fetch_4");
int SubtractAndFetch(volatile void* word, int subtrahend) __asm__("__sync_sub_and_fetch_4");
void Synchronize() __asm__("__sync_synchronize");

int AddAndFetch(volatile void* word, int addend) {
  volatile long* value = static_cast<volatile long*>(word);
  if (addend == 1) return static_cast<int>(CoreIncrement(value));
  if (addend == -1) return static_cast<int>(CoreDecrement(value));
  for (;;) {
    const long old = *value;
    const long sum =
        static_cast<long>(static_cast<unsigned long>(old) + static_cast<unsigned long>(addend));
    if (CoreTestExchange(value, old, sum) == old) return static_cast<int>(sum);
  }
}

int SubtractAndFetch(volatile void* word, int subtrahend) {
  return AddAndFetch(word, static_cast<int>(0u - static_cast<unsigned>(subtrahend)));
}

// One core: the compiler alone must keep the order.
void Synchronize() {
  __asm__ volatile("" ::: "memory");
}
}
