#include "guest_stack.h"

#include <windows.h>

#include "faults.h"

namespace bridge {
namespace {

constexpr uint32_t kPage = 0x1000;
constexpr uint32_t kBytes = 0x10000;
constexpr uint32_t kBelow = 0x40000;  // in which a stack pointer that ran off is recognised
// Of the caller, who would have pushed its own there; what a call is handed is read up to here.
constexpr uint32_t kCallersFrame = 68;

}  // namespace

GuestStack::GuestStack()
    : memory_(static_cast<uint8_t*>(
          VirtualAlloc(nullptr, kBelow + kBytes, MEM_RESERVE, PAGE_NOACCESS))) {
  if (!memory_ || !VirtualAlloc(memory_ + kBelow, kBytes, MEM_COMMIT, PAGE_READWRITE)) {
    Fail("no memory for a stack");
  }
  Reset();
}

GuestStack::~GuestStack() {
  VirtualFree(memory_, 0, MEM_RELEASE);
}

uint32_t GuestStack::top() const {
  return reinterpret_cast<uint32_t>(memory_) + kBelow + kBytes - kCallersFrame;
}

void GuestStack::Reset() {
  lowest_ = reinterpret_cast<uint32_t>(memory_) + kBelow + kBytes - kPage;
}

bool GuestStack::Use(uint32_t page) {
  const uint32_t begin = reinterpret_cast<uint32_t>(memory_);
  if (page - begin >= kBelow + kBytes) return false;
  if (page < begin + kBelow) Fail("a stack of more than %u KB", kBytes / 1024);
  if (page < lowest_ - kPage) Fail("a page of the stack is skipped: %#x after %#x", page, lowest_);
  if (page < lowest_) lowest_ = page;
  return true;
}

}  // namespace bridge
