// What taps and commands do to the check boxes of the catalog's tree, as it is described.
#pragma once

#include <vector>

#include "tests/oracles/grouping_model.h"

namespace kelvo::oracle {

inline void CheckBelow(ModelNode* node, bool checked) {
  for (ModelNode* child : node->children) {
    child->checked = checked;
    CheckBelow(child, checked);
  }
}
inline void UncheckAbove(ModelNode* node) {
  for (ModelNode* up = node->parent; up; up = up->parent) up->checked = false;
}
inline void InvertBelow(ModelNode* node) {
  for (ModelNode* child : node->children) {
    const bool was_checked = child->checked;
    child->checked = !was_checked;
    if (was_checked) UncheckAbove(child);
    InvertBelow(child);
  }
}
// With the control's own part, which comes after.
inline void TapBox(ModelNode* node) {
  node->checked ? UncheckAbove(node) : CheckBelow(node, true);
  node->checked = !node->checked;
}
// The files of checked nodes, in the tree's order.
inline void CheckedFiles(const ModelNode* node, std::vector<size_t>* files) {
  for (const ModelNode* child : node->children) {
    if (child->checked && child->kind == 'F') files->push_back(child->file);
    CheckedFiles(child, files);
  }
}

}  // namespace kelvo::oracle
