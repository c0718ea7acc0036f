#include "catalog/tree/checked_files.h"

namespace kelvo {

size_t IndexOfNode(const EntryList& entries, TreeNode node) noexcept {
  size_t i = 0;
  if (node == kNoNode) return entries.size();
  while (i < entries.size() && (entries[i].item != node || !entries[i].path.has_value())) ++i;
  return i;
}

MediaEntry* EntryOfNode(EntryList& entries, TreeNode node) noexcept {
  const size_t i = IndexOfNode(entries, node);
  return i < entries.size() ? &entries[i] : nullptr;
}

bool AddCopy(const MediaEntry& entry, EntryList* list) noexcept {
  MediaEntry* copy = list->Add(entry.path.c_str());
  if (!copy) return false;
  if (entry.tag) copy->tag.Reset(HeapNew<TagBlock>(*entry.tag));
  copy->item = 1;
  return true;
}

void AddCheckedFiles(CheckTree& tree, EntryList& media, EntryList* playlist) noexcept {
  for (TreeNode node = NextBelow(tree, kNoNode, kNoNode); node != kNoNode;
       node = NextBelow(tree, kNoNode, node)) {
    if (!tree.IsFile(node) || !tree.IsChecked(node)) continue;
    if (const MediaEntry* entry = EntryOfNode(media, node)) AddCopy(*entry, playlist);
  }
}

}  // namespace kelvo
