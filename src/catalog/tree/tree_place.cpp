#include "catalog/tree/tree_place.h"

#include "base/text/wide.h"

namespace kelvo {

void TreePlace::Remember(const CatalogTree& tree, TreeView& view,
                         const EntryList& entries) noexcept {
  groups_.Clear();
  RememberBelow(tree, view, kNoNode, 0);
  if (!checked_.Resize(entries.size())) return;
  for (size_t i = 0; i < entries.size(); ++i) {
    checked_[i] = entries[i].item != kNoNode && tree.IsChecked(entries[i].item);
  }
}

// As deep as groups or folders lie in one another.
void TreePlace::RememberBelow(const CatalogTree& tree, TreeView& view, TreeNode parent,
                              size_t depth) noexcept {
  for (TreeNode node = tree.FirstChild(parent); node != kNoNode; node = tree.NextSibling(node)) {
    if (tree.IsFile(node)) continue;
    const size_t at = groups_.size();
    const bool checked = tree.IsChecked(node);
    const bool open = view.IsOpen(node);
    HeapText label;
    view.CopyLabel(node, label_);
    if (!label.Assign(label_) || !groups_.Append({depth, checked, open, std::move(label)})) return;
    RememberBelow(tree, view, node, depth + 1);
    if (!checked && !open && groups_.size() == at + 1) groups_.RemoveAt(at);
  }
}

void TreePlace::Restore(CatalogTree& tree, TreeView& view, const EntryList& entries,
                        const MediaEntry& moved) noexcept {
  RestoreBelow(tree, view, kNoNode, 0, 0);
  for (size_t i = 0; i < entries.size() && i < checked_.size(); ++i) {
    if (checked_[i] && entries[i].item != kNoNode) tree.SetChecked(entries[i].item, true);
  }
  if (moved.item != kNoNode && !tree.IsChecked(moved.item)) UncheckAncestors(tree, moved.item);
}

void TreePlace::RestoreBelow(CatalogTree& tree, TreeView& view, TreeNode parent, size_t depth,
                             size_t first) noexcept {
  // Both are in the tree's order: the next group is mostly the next one remembered.
  size_t next = first;
  for (TreeNode node = tree.FirstChild(parent); node != kNoNode; node = tree.NextSibling(node)) {
    if (tree.IsFile(node)) continue;
    view.CopyLabel(node, label_);
    size_t at = Find(depth, next);
    if (at == groups_.size()) at = Find(depth, first);
    if (at == groups_.size()) continue;
    next = at + 1;
    if (groups_[at].checked) tree.SetChecked(node, true);
    RestoreBelow(tree, view, node, depth + 1, at + 1);
    if (groups_[at].open) view.Open(node);
  }
}

// From `first` on, among those of one parent, the group of this label; their number without one.
size_t TreePlace::Find(size_t depth, size_t first) const noexcept {
  for (size_t i = first; i < groups_.size() && groups_[i].depth >= depth; ++i) {
    if (groups_[i].depth == depth && EqualNoCase(groups_[i].label.c_str(), label_)) return i;
  }
  return groups_.size();
}

}  // namespace kelvo
