#include "playlist/nesting_guard.h"

#include "base/text/wide.h"

namespace kelvo {

bool ChainGuard::IsOpen(const wchar_t* path) const noexcept {
  for (const HeapText& open : chain_) {
    if (EqualNoCase(open.c_str(), path)) return true;
  }
  return false;
}

bool ChainGuard::Enter(const wchar_t* path) noexcept {
  HeapText copy;
  if (entered_ >= kMostLists || IsOpen(path)) return false;
  if (!copy.Assign(path) || !chain_.Append(std::move(copy))) return false;
  ++entered_;
  return true;
}

void ChainGuard::Leave() noexcept {
  chain_.RemoveAt(chain_.size() - 1);
}

}  // namespace kelvo
