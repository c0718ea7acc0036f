#pragma once

#include "catalog/media/entry_list.h"

namespace kelvo {

// Takes out the entry of a file that was deleted from the Media Catalog. The later entries move
// down and the last one then stands in the last two slots: until the next scan it shows twice after
// a regrouping. The doubled slot owns its own copies. When the last entry itself is taken out, or
// memory is out for the copies, the last slot stays without a path.
void DeleteEntry(EntryList& entries, size_t at) noexcept;

}  // namespace kelvo
