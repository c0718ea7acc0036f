#include "catalog/tree/checks.h"

#include "base/memory/array.h"

namespace kelvo {
namespace {

bool AddCopy(const MediaEntry& entry, EntryList* list) noexcept {
  MediaEntry* copy = list->Add(entry.path.c_str());
  if (!copy) return false;
  if (entry.tag) copy->tag.Reset(HeapNew<TagBlock>(*entry.tag));
  copy->item = kEntryFlag;
  return true;
}

// The entries by their nodes: a walk over all of them for each checked file would take seconds.
class NodeTable {
 public:
  NodeTable(const CatalogTree& tree, const EntryList& entries) noexcept : entries_(entries) {
    if (!places_.Resize(tree.last() + 1)) return;
    for (size_t i = entries.size(); i-- > 0;) {  // of twins the first one
      if (tree.Has(entries[i].item)) places_[entries[i].item] = static_cast<uint32_t>(i) + 1;
    }
  }

  // size() of the list when there is none.
  size_t Find(TreeNode node) const noexcept {
    if (places_.empty()) return IndexOfNode(entries_, node);  // memory is out
    return places_[node] == 0 ? entries_.size() : places_[node] - 1;
  }

 private:
  const EntryList& entries_;
  Array<uint32_t> places_;  // by node, positions counted from 1
};

}  // namespace

void UncheckAncestors(CatalogTree& tree, TreeNode node) noexcept {
  for (node = tree.Parent(node); node != kNoNode; node = tree.Parent(node)) {
    tree.SetChecked(node, false);
  }
}

void SetChecksBelow(CatalogTree& tree, TreeNode top, bool checked) noexcept {
  WalkBelow walk(tree, top);
  while (const TreeNode node = walk.Next()) tree.SetChecked(node, checked);
}

void InvertChecksBelow(CatalogTree& tree, TreeNode top) noexcept {
  TreeNode unchecked = kNoNode;  // with all above it; they have been passed
  WalkBelow walk(tree, top);
  while (const TreeNode node = walk.Next()) {
    const bool was_checked = tree.IsChecked(node);
    tree.SetChecked(node, !was_checked);
    if (!was_checked || tree.Parent(node) == unchecked) continue;
    UncheckAncestors(tree, node);
    unchecked = tree.Parent(node);
  }
}

void CheckBoxTapped(CatalogTree& tree, TreeNode node) noexcept {
  if (tree.IsChecked(node)) {
    UncheckAncestors(tree, node);
  } else {
    SetChecksBelow(tree, node, true);
  }
}

size_t IndexOfNode(const EntryList& entries, TreeNode node) noexcept {
  size_t i = 0;
  if (node == kNoNode) return entries.size();
  while (i < entries.size() && entries[i].item != node) ++i;
  return i;
}

MediaEntry* EntryOfNode(EntryList& entries, TreeNode node) noexcept {
  const size_t i = IndexOfNode(entries, node);
  return i < entries.size() ? &entries[i] : nullptr;
}

void AddCheckedFiles(const CatalogTree& tree, const EntryList& media,
                     EntryList* playlist) noexcept {
  size_t checked = 0;
  for (TreeNode node = 1; node <= tree.last(); ++node) {
    checked += tree.IsFile(node) && tree.IsChecked(node);
  }
  playlist->GrowFor(checked);
  const NodeTable table(tree, media);
  WalkBelow walk(tree, kNoNode);
  while (const TreeNode node = walk.Next()) {
    if (!tree.IsChecked(node) || !tree.IsFile(node)) continue;
    const size_t at = table.Find(node);
    if (at < media.size()) AddCopy(media[at], playlist);
  }
}

}  // namespace kelvo
