#include "pocketpc/aygshell/hook.h"

#include "base/memory/array.h"
#include "base/sync/lock.h"

namespace kelvo {
namespace {

struct Record {
  HWND window;
  WNDPROC front;
  WNDPROC below;
  DWORD_PTR data;
};

// Windows of all threads.
Lock lock;
Array<Record> records;

// Null when there is none. With the lock held.
Record* Find(HWND window, WNDPROC front) noexcept {
  for (size_t i = records.size(); i-- > 0;) {
    if (records[i].window == window && records[i].front == front) return &records[i];
  }
  return nullptr;
}

WNDPROC ProcedureOf(HWND window) noexcept {
  return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
}

void SetProcedure(HWND window, WNDPROC procedure) noexcept {
  SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
}

}  // namespace

LRESULT RunHook(HookProcedure procedure, WNDPROC front, HookedMessage call) noexcept {
  {
    const LockGuard guard(lock);
    const Record* record = Find(call.window, front);
    if (!record) return DefWindowProcW(call.window, call.message, call.wparam, call.lparam);
    call.below = record->below;
    call.data = record->data;
    if (call.message == WM_NCDESTROY) RemoveHook(call.window, front);
  }
  return procedure(call);
}

bool InsertHook(HWND window, WNDPROC front, DWORD_PTR data) noexcept {
  const LockGuard guard(lock);
  if (Record* record = Find(window, front)) {
    record->data = data;
    return true;
  }
  if (!IsWindow(window) || !records.Append({window, front, ProcedureOf(window), data}))
    return false;
  SetProcedure(window, front);
  return true;
}

void RemoveHook(HWND window, WNDPROC front) noexcept {
  const LockGuard guard(lock);
  Record* record = Find(window, front);
  if (!record) return;
  bool is_off = ProcedureOf(window) == front;
  if (is_off) SetProcedure(window, record->below);
  for (Record& other : records) {
    if (other.window != window || other.below != front) continue;
    other.below = record->below;
    is_off = true;
  }
  record->data = 0;
  if (is_off) records.RemoveAt(static_cast<size_t>(record - records.begin()));
}

}  // namespace kelvo
