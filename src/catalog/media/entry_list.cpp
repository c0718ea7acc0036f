#include "catalog/media/entry_list.h"

namespace kelvo {

MediaEntry* EntryList::Add(const wchar_t* path) noexcept {
  if (entries_.size() == entries_.capacity() && !entries_.Reserve(entries_.capacity() + kGrowth)) {
    return nullptr;
  }
  MediaEntry entry;
  if (!entry.path.Assign(path) || !entries_.Append(std::move(entry))) return nullptr;
  return &entries_.back();
}

}  // namespace kelvo
