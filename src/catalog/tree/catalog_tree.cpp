#include "catalog/tree/catalog_tree.h"

namespace kelvo {

void CatalogTree::Clear() noexcept {
  root_ = Node();
  nodes_.Clear();
  text_.Clear();
}

TreeNode CatalogTree::Add(TreeNode parent, NodeKind kind, const wchar_t* label) noexcept {
  Node node;
  node.parent = static_cast<uint32_t>(parent);
  node.kind = kind;
  node.label = static_cast<uint32_t>(text_.size());
  if (!text_.AppendRange(label, WideLength(label) + 1) || !nodes_.Append(node)) return kNoNode;
  const uint32_t added = static_cast<uint32_t>(nodes_.size());
  Node& above = At(parent);
  if (above.first == 0) {
    above.first = added;
  } else {
    At(above.last).next = added;
  }
  above.last = added;
  return added;
}

// Divided, sorted and merged. The halves and the order of questions are those of the system's own
// sort: where a comparison contradicts itself, as that of folders and files does, they decide.
template <class Compare>
uint32_t CatalogTree::Sorted(uint32_t first, size_t count, const Compare& compare) noexcept {
  if (count == 1) {
    At(first).next = 0;
    return first;
  }
  const size_t half = (count + 1) / 2;
  uint32_t middle = first;
  for (size_t i = 0; i < half; ++i) middle = At(middle).next;
  uint32_t a = Sorted(first, half, compare);
  uint32_t b = Sorted(middle, count - half, compare);
  Node head;
  Node* last = &head;
  while (a != 0 && b != 0) {
    uint32_t& taken = compare(a, b) > 0 ? b : a;
    last->next = taken;
    last = &At(taken);
    taken = last->next;
  }
  last->next = a != 0 ? a : b;
  return head.next;
}

template <class Compare>
void CatalogTree::SortChildren(TreeNode parent, const Compare& compare) noexcept {
  size_t count = 0;
  for (uint32_t child = At(parent).first; child != 0; child = At(child).next) ++count;
  if (count > 1) At(parent).first = Sorted(At(parent).first, count, compare);
}

void CatalogTree::SortLabels(TreeNode parent) noexcept {
  SortChildren(parent,
               [this](uint32_t a, uint32_t b) { return CompareLabels(Label(a), Label(b)); });
}

void CatalogTree::SortFolders(TreeNode parent) noexcept {
  SortChildren(parent, [this](uint32_t a, uint32_t b) {
    return IsFile(a) || IsFile(b) ? 0 : CompareNoCase(Label(a), Label(b));
  });
}

void CatalogTree::Remove(TreeNode node) noexcept {
  WalkBelow walk(*this, node);
  for (TreeNode below = walk.Next(); below != kNoNode; below = walk.Next()) {
    At(below).is_there = false;
  }
  Node& removed = At(node);
  removed.is_there = false;
  uint32_t* link = &At(removed.parent).first;
  while (*link != node) link = &At(*link).next;
  *link = removed.next;
}

}  // namespace kelvo
