#pragma once

#include "catalog/media/entry_list.h"
#include "catalog/tree/check_rules.h"

namespace kelvo {

// The first entry whose item word is `node`; null when there is none.
MediaEntry* EntryOfNode(EntryList& entries, TreeNode node) noexcept;
size_t IndexOfNode(const EntryList& entries, TreeNode node) noexcept;  // size() when none

// Appends copies of the tree's checked files, flagged as checked, in the tree's order, however often
// they are there already. A file without memory is left out; without memory for its tag it has none.
void AddCheckedFiles(CheckTree& tree, const EntryList& media, EntryList* playlist) noexcept;

}  // namespace kelvo
