// A tree as text: one node a line, indented by its depth, with its kind's letter.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "catalog/tree/catalog_tree.h"
#include "catalog/tree/tree_place.h"
#include "tests/support/wide_text.h"

namespace kelvo::test {

// Handles count from 1 in the order of insertion.
class TextTree final : public TreeSink, public PlaceTree {
 public:
  struct Node {
    TreeNode parent = kNoNode;
    NodeKind kind = NodeKind::kFolder;
    std::string label;
    bool checked = false;
    bool open = false;
    std::vector<TreeNode> children;
  };
  TextTree() : nodes(1) {}
  std::vector<Node> nodes;
  std::string failing;  // PathOf() of the nodes that cannot be inserted
  std::string sorted;   // "l1 f1 ": labels or folders of a node

  TreeNode Add(TreeNode parent, NodeKind kind, const wchar_t* label) noexcept override {
    const TreeNode node = nodes.size();
    nodes.push_back({parent, kind, Utf8(label), false, false, {}});
    if (!failing.empty() && PathOf(node) == failing) {
      nodes.pop_back();
      return kNoNode;
    }
    nodes[parent].children.push_back(node);
    return node;
  }
  void SortLabels(TreeNode parent) noexcept override {
    sorted += "l" + std::to_string(parent) + " ";
    Sort(parent, [this](TreeNode a, TreeNode b) { return nodes[a].label < nodes[b].label; });
  }
  void SortFolders(TreeNode parent, const FolderOrder& order) noexcept override {
    sorted += "f" + std::to_string(parent) + " ";
    Sort(parent, [&](TreeNode a, TreeNode b) {
      return !IsFile(a) && !IsFile(b) && order.Compare(a, b) < 0;
    });
  }
  template <class Less>
  void Sort(TreeNode parent, const Less& less) {
    auto& all = nodes[parent].children;
    for (size_t i = 1; i < all.size(); ++i) {
      for (size_t j = i; j > 0 && less(all[j], all[j - 1]); --j) std::swap(all[j], all[j - 1]);
    }
  }

  // The labels from the root, a line each.
  std::string PathOf(TreeNode node) const {
    return node == kNoNode ? "" : PathOf(nodes[node].parent) + "\n" + nodes[node].label;
  }
  TreeNode FirstChild(TreeNode node) noexcept override {
    return nodes[node].children.empty() ? kNoNode : nodes[node].children[0];
  }
  TreeNode NextSibling(TreeNode node) noexcept override {
    const auto& all = nodes[nodes[node].parent].children;
    const auto next = std::find(all.begin(), all.end(), node) + 1;
    return next == all.end() ? kNoNode : *next;
  }
  TreeNode Parent(TreeNode node) noexcept override { return nodes[node].parent; }
  bool IsChecked(TreeNode node) noexcept override { return nodes[node].checked; }
  void SetChecked(TreeNode node, bool checked) noexcept override { nodes[node].checked = checked; }
  void CopyLabel(TreeNode node, wchar_t (&label)[kTextCapacity]) noexcept override {
    CopyWide(label, kTextCapacity, Wide(nodes[node].label));
  }
  bool IsOpen(TreeNode node) noexcept override { return nodes[node].open; }
  void Open(TreeNode node) noexcept override { nodes[node].open = true; }
  bool IsFile(TreeNode node) noexcept override { return nodes[node].kind == NodeKind::kFile; }

  std::string Text(TreeNode node = kNoNode, int depth = 0) const {
    std::string text;
    for (const TreeNode child : nodes[node].children) {
      text += std::string(static_cast<size_t>(depth), ' ') +
              "GLAFD"[static_cast<int>(nodes[child].kind)] + " " + nodes[child].label +
              (nodes[child].checked ? " x" : "") + (nodes[child].open ? " open\n" : "\n");
      text += Text(child, depth + 1);
    }
    return text;
  }
};

}  // namespace kelvo::test
