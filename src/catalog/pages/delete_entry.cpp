#include "catalog/pages/delete_entry.h"

namespace kelvo {

void DeleteEntry(EntryList& entries, size_t at) noexcept {
  const size_t last = entries.size() - 1;
  for (size_t i = at; i < last; ++i) entries[i] = std::move(entries[i + 1]);
  entries[last] = MediaEntry();
  if (at == last) return;
  const MediaEntry& twin = entries[last - 1];
  if (!twin.path.has_value() || !entries[last].path.Assign(twin.path.get())) return;
  if (twin.tag) entries[last].tag.Reset(HeapNew<TagBlock>(*twin.tag));
  entries[last].item = twin.item;
}

}  // namespace kelvo
