// An export of the device's component that nobody calls: its address lies before the slots of the
// imports, and whoever looks for a slot steps from here word by word. So it must lie at a word
// boundary; 16 suits words of any size.
extern "C" __attribute__((aligned(16))) int AllocationError(unsigned int bytes) {
  return static_cast<int>(bytes);
}
