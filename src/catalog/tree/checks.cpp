#include "catalog/tree/checks.h"

#include "base/memory/array.h"
#include "catalog/tree/hashing.h"

namespace kelvo {
namespace {

// All that is below `top`, in the order node, what is below it, next sibling.
class WalkBelow {
 public:
  WalkBelow(CheckTree& tree, TreeNode top) noexcept : tree_(tree), top_(top), node_(top) {}

  // kNoNode at the end.
  TreeNode Next() noexcept {
    TreeNode next = tree_.FirstChild(node_);
    if (next != kNoNode) parent_ = node_;
    while (next == kNoNode && node_ != top_) {
      next = tree_.NextSibling(node_);
      if (next != kNoNode) break;
      node_ = parent_;
      parent_ = node_ == top_ ? kNoNode : tree_.Parent(node_);
    }
    return node_ = next;
  }
  TreeNode node() const noexcept { return node_; }
  TreeNode parent() const noexcept { return parent_; }

 private:
  CheckTree& tree_;
  TreeNode top_;
  TreeNode node_;
  TreeNode parent_ = kNoNode;
};

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
  explicit NodeTable(const EntryList& entries) noexcept : entries_(entries) {
    if (!slots_.Resize(SlotsFor(2 * entries.size() + 1))) return;
    for (size_t i = 0; i < entries.size(); ++i) {
      uint32_t& slot = SlotOf(entries[i].item);
      if (slot == 0) slot = static_cast<uint32_t>(i) + 1;  // of twins the first one
    }
  }

  // size() of the list when there is none.
  size_t Find(TreeNode node) noexcept {
    if (slots_.empty()) return IndexOfNode(entries_, node);  // memory is out
    const uint32_t slot = SlotOf(node);
    return slot == 0 ? entries_.size() : slot - 1;
  }

 private:
  // The node's slot, or the empty one where it belongs.
  uint32_t& SlotOf(TreeNode node) noexcept {
    const size_t mask = slots_.size() - 1;
    size_t at = HashOfNode(node) & mask;
    while (slots_[at] != 0 && entries_[slots_[at] - 1].item != node) at = (at + 1) & mask;
    return slots_[at];
  }

  const EntryList& entries_;
  Array<uint32_t> slots_;  // positions counted from 1; half of them at least are empty
};

}  // namespace

void UncheckAncestors(CheckTree& tree, TreeNode node) noexcept {
  for (node = tree.Parent(node); node != kNoNode; node = tree.Parent(node)) {
    tree.SetChecked(node, false);
  }
}

void SetChecksBelow(CheckTree& tree, TreeNode top, bool checked) noexcept {
  WalkBelow walk(tree, top);
  while (walk.Next() != kNoNode) tree.SetChecked(walk.node(), checked);
}

void InvertChecksBelow(CheckTree& tree, TreeNode top) noexcept {
  TreeNode unchecked = kNoNode;  // with all above it; they have been passed
  WalkBelow walk(tree, top);
  while (walk.Next() != kNoNode) {
    const bool was_checked = tree.IsChecked(walk.node());
    tree.SetChecked(walk.node(), !was_checked);
    if (!was_checked || walk.parent() == unchecked) continue;
    UncheckAncestors(tree, walk.node());
    unchecked = walk.parent();
  }
}

void CheckBoxTapped(CheckTree& tree, TreeNode node) noexcept {
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

void AddCheckedFiles(CheckTree& tree, const EntryList& media, EntryList* playlist) noexcept {
  NodeTable table(media);
  WalkBelow walk(tree, kNoNode);
  while (walk.Next() != kNoNode) {
    if (!tree.IsChecked(walk.node()) || !tree.IsFile(walk.node())) continue;
    const size_t at = table.Find(walk.node());
    if (at < media.size()) AddCopy(media[at], playlist);
  }
}

}  // namespace kelvo
