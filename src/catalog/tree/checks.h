// How the check boxes of groups and files hang together, and what becomes of checked files.
#pragma once

#include "catalog/media/entry_list.h"
#include "catalog/tree/catalog_tree.h"

namespace kelvo {

// All descendants of `top`; not itself.
void SetChecksBelow(CatalogTree& tree, TreeNode top, bool checked) noexcept;
void InvertChecksBelow(CatalogTree& tree, TreeNode top) noexcept;

// A group is shown as checked only while everything in it is.
void UncheckAncestors(CatalogTree& tree, TreeNode node) noexcept;

// What a tap on the box of `node` changes besides the box itself, which the control toggles
// afterwards.
void CheckBoxTapped(CatalogTree& tree, TreeNode node) noexcept;

// The first entry whose item word is `node`; null when there is none.
MediaEntry* EntryOfNode(EntryList& entries, TreeNode node) noexcept;
size_t IndexOfNode(const EntryList& entries, TreeNode node) noexcept;  // size() when none

// Appends copies of the tree's checked files, flagged as checked, in the tree's order, however
// often they are there already. A file without memory is left out; without memory for its tag it
// has none.
void AddCheckedFiles(const CatalogTree& tree, const EntryList& media, EntryList* playlist) noexcept;

}  // namespace kelvo
