#include "catalog/pages/hand_over.h"

namespace kelvo {

void HandOverEntries(const HostCallback& host, HandOver how, const EntryList& entries) noexcept {
  if (!host.is_set()) return;
  if (how == HandOver::kPlay) host.function(kCatalogClearList, host.cookie);
  for (const MediaEntry& entry : entries) {
    if (entry.item != 0 && entry.path.has_value()) host.function(entry.path.get(), host.cookie);
  }
  host.function(CatalogEndOfList(), host.cookie);
}

}  // namespace kelvo
