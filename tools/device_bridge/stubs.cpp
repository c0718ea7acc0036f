#include "stubs.h"

#include <windows.h>

#include <string.h>

#include "engine.h"
#include "faults.h"

namespace bridge {
namespace {

constexpr uint32_t kStubBytes = 32;
constexpr uint32_t kLoadPc = 0xE51FF004;  // ldr pc, [pc, #-4]: the next word

// The desktop's lists pack the record of a pressed key and put it at any address; on the device all
// records lie where words can be read. A window procedure gets such a one as a copy.
class AlignedNotification {
 public:
  AlignedNotification(uint32_t* words, uint32_t count) {
    if (count != 4 || words[1] != WM_NOTIFY || words[3] % 4 == 0) return;
    original_ = reinterpret_cast<void*>(words[3]);
    memcpy(record_, original_, sizeof(record_));
    words[3] = reinterpret_cast<uint32_t>(record_);
  }
  ~AlignedNotification() {
    if (original_) memcpy(original_, record_, sizeof(record_));
  }
  AlignedNotification(const AlignedNotification&) = delete;
  AlignedNotification& operator=(const AlignedNotification&) = delete;

 private:
  void* original_ = nullptr;
  alignas(8) uint8_t record_[18];  // NMLVKEYDOWN and NMTVKEYDOWN
};

// Called by every stub. `arguments` are those on the stack, `object` is what the register held.
extern "C" __attribute__((force_align_arg_pointer)) uint64_t EnterDevice(
    const Stubs::Target* target, const uint32_t* arguments, uint32_t object) {
  uint32_t words[Engine::kMaxWords];
  uint32_t count = 0;
  if (target->convention == Convention::kThis) words[count++] = object;
  for (uint32_t i = 0; i < target->words; ++i) words[count++] = arguments[i];
  const AlignedNotification notification(words, count);
  return CurrentEngine().Call(target->function, words, count);
}

#pragma pack(push, 1)
struct StubCode {
  uint8_t lea_eax[4] = {0x8D, 0x44, 0x24, 0x04};  // of the arguments
  uint8_t push_ecx = 0x51, push_eax = 0x50, push_target = 0x68;
  const Stubs::Target* target;
  uint8_t call = 0xE8;
  uint32_t distance;
  uint8_t add_esp[3] = {0x83, 0xC4, 0x0C};
  uint8_t ret = 0xC2;
  uint16_t popped;
};
#pragma pack(pop)
static_assert(sizeof(StubCode) <= kStubBytes);

uint8_t* Allocate(uint32_t bytes, DWORD protection) {
  void* memory = VirtualAlloc(nullptr, bytes, MEM_COMMIT | MEM_RESERVE, protection);
  if (!memory) Fail("no memory for stubs");
  return static_cast<uint8_t*>(memory);
}

}  // namespace

Stubs::Stubs()
    : code_(Allocate(kCapacity * kStubBytes, PAGE_EXECUTE_READWRITE)),
      emulated_(Allocate(kCapacity * kStubBytes, PAGE_READWRITE)) {}

Stubs::~Stubs() {
  VirtualFree(code_, 0, MEM_RELEASE);
  VirtualFree(emulated_, 0, MEM_RELEASE);
}

uint32_t Stubs::Add(const Target& target) {
  const std::lock_guard<std::mutex> guard(lock_);
  for (int i = 0; i < count_; ++i) {
    if (targets_[i].function == target.function && targets_[i].convention == target.convention) {
      return reinterpret_cast<uint32_t>(code_ + i * kStubBytes);
    }
  }
  if (count_ == kCapacity || target.words >= Engine::kMaxWords) Fail("too many functions");
  const uint32_t offset = static_cast<uint32_t>(count_) * kStubBytes;
  targets_[count_] = target;

  StubCode code;
  uint8_t* const after_call = code_ + offset + offsetof(StubCode, add_esp);
  code.target = &targets_[count_++];
  code.distance = reinterpret_cast<uint32_t>(&EnterDevice) - reinterpret_cast<uint32_t>(after_call);
  code.popped = target.convention == Convention::kC ? 0 : static_cast<uint16_t>(4 * target.words);
  memcpy(code_ + offset, &code, sizeof(code));
  const uint32_t jump[] = {kLoadPc, target.function};
  memcpy(emulated_ + offset, jump, sizeof(jump));
  return reinterpret_cast<uint32_t>(code_ + offset);
}

bool Stubs::Contains(uint32_t address) const {
  return address - reinterpret_cast<uint32_t>(code_) < kCapacity * kStubBytes;
}

const Stubs::Target& Stubs::At(uint32_t address) const {
  return targets_[(address - reinterpret_cast<uint32_t>(code_)) / kStubBytes];
}

uint32_t Stubs::EmulatedPage(uint32_t page) const {
  return page - reinterpret_cast<uint32_t>(code_) + reinterpret_cast<uint32_t>(emulated_);
}

}  // namespace bridge

__asm__(
    ".globl _CallHost\n"
    "_CallHost:\n"
    "  pushl %ebp\n"
    "  movl %esp, %ebp\n"
    "  pushl %esi\n"
    "  pushl %edi\n"
    "  pushl %ebx\n"
    "  subl $64, %esp\n"
    "  andl $-16, %esp\n"
    "  movl 12(%ebp), %esi\n"
    "  movl %esp, %edi\n"
    "  movl $16, %ecx\n"
    "  cld\n"
    "  rep movsl\n"
    "  movl 16(%ebp), %ecx\n"
    "  call *8(%ebp)\n"
    "  leal -12(%ebp), %esp\n"
    "  popl %ebx\n"
    "  popl %edi\n"
    "  popl %esi\n"
    "  popl %ebp\n"
    "  ret\n");
