#pragma once

#include "catalog/media/entry_list.h"
#include "catalog/tree/check_rules.h"

namespace kelvo {

// The first entry whose item word is `node`; null when there is none.
MediaEntry* EntryOfNode(EntryList& entries, TreeNode node) noexcept;
size_t IndexOfNode(const EntryList& entries, TreeNode node) noexcept;  // size() when none

// Appends a copy of the entry with its tag, flagged as checked. False when memory is out for the
// entry; without memory for the tag the copy has none.
bool AddCopy(const MediaEntry& entry, EntryList* list) noexcept;

// Appends the checked files of the tree in the tree's order, however often they are there already.
void AddCheckedFiles(CheckTree& tree, EntryList& media, EntryList* playlist) noexcept;

}  // namespace kelvo
