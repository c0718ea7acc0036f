// A tree as text: one node a line, indented by its depth, with its kind's letter.
#pragma once

#include <set>
#include <string>

#include "catalog/tree/catalog_tree.h"
#include "tests/support/wide_text.h"

namespace kelvo::test {

inline std::string Text(const CatalogTree& tree, TreeNode node = kNoNode, size_t depth = 0) {
  std::string text;
  for (TreeNode child = tree.FirstChild(node); child; child = tree.NextSibling(child)) {
    text += std::string(depth, ' ') + "GLAFD"[static_cast<int>(tree.Kind(child))] + " " +
            Utf8(tree.Label(child)) + (tree.IsChecked(child) ? " x\n" : "\n");
    text += Text(tree, child, depth + 1);
  }
  return text;
}

// The labels from the root: "A/m/1".
inline std::string PathOf(const CatalogTree& tree, TreeNode node) {
  const TreeNode parent = tree.Parent(node);
  return (parent ? PathOf(tree, parent) + "/" : "") + Utf8(tree.Label(node));
}

}  // namespace kelvo::test
