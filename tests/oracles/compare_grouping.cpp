// The tree in its seven orders, and then taps and commands on its check boxes.
#include <gtest/gtest.h>

#include "base/memory/heap.h"
#include "catalog/tree/build_tree.h"
#include "catalog/tree/checks.h"
#include "tests/oracles/cases.h"
#include "tests/oracles/checks_model.h"
#include "tests/oracles/grouping_model.h"
#include "tests/support/wide_text.h"

namespace kelvo::oracle {
namespace {

using test::Utf8;
using test::Wide;

std::string Field(std::string text) {
  text.resize(31);
  return text;
}

GroupedFile SomeFile(Dice& dice) {
  const auto name = [&] {
    return dice.Word(
        "Music|MUSIC|Music2|music2x|Mus||a.mp3|Mus\xEF|MUS\xCF|"
        "123456789012345678901234567890123456789012345678901234567890");
  };
  // Two of them have the same 32-bit hash.
  const auto word = [&] {
    return Field(
        dice.Word("Sine|SINE|sinE ||Square|Saw|123456789012345678901234567890|s|liquid|"
                  "costarring|\xE9|\xC9"));
  };
  GroupedFile file;
  file.path = dice.OneIn(4) ? "" : "\\";
  if (dice.OneIn(2)) {
    file.path += dice.Row("a|A|b|\\|\\", 8);
  } else {
    for (uint32_t depth = dice.Roll(5); depth > 0; --depth) file.path += name() + "\\";
    file.path += name();
  }
  file.has_path = !dice.OneIn(12);
  if (!dice.OneIn(5)) {
    file.tag = {word(), word(), word(), word()};
  }
  return file;
}

void CollectText(const CatalogTree& tree, TreeNode node, const EntryList& list, int depth,
                 std::string* text, std::vector<TreeNode>* nodes) {
  for (TreeNode child = tree.FirstChild(node); child; child = tree.NextSibling(child)) {
    nodes->push_back(child);
    *text += std::string(static_cast<size_t>(depth), ' ') +
             "GLAFD"[static_cast<int>(tree.Kind(child))] + (tree.IsChecked(child) ? "+" : " ") +
             Utf8(tree.Label(child));
    for (size_t i = 0; i < list.size(); ++i) {
      if (list[i].item == child) *text += "#" + std::to_string(i);
    }
    *text += "\n";
    CollectText(tree, child, list, depth + 1, text, nodes);
  }
}

void CollectText(ModelNode* node, int depth, std::string* text, std::vector<ModelNode*>* nodes) {
  for (ModelNode* child : node->children) {
    nodes->push_back(child);
    *text += std::string(static_cast<size_t>(depth), ' ') + child->kind +
             (child->checked ? "+" : " ") + ToUtf8(child->label) +
             (child->kind == 'F' ? "#" + std::to_string(child->file) : "") + "\n";
    CollectText(child, depth + 1, text, nodes);
  }
}

void Compare(Dice& dice) {
  std::vector<GroupedFile> files;
  for (uint32_t n = dice.Roll(dice.OneIn(4) ? 30 : 10); n > 0; --n) {
    const GroupedFile file = SomeFile(dice);
    files.insert(files.end(), dice.OneIn(8) ? 2 : 1, file);
  }
  EntryList list;
  for (const GroupedFile& file : files) {
    MediaEntry* const entry = list.Add(Wide(ToUtf8(file.path)));
    ASSERT_TRUE(entry);
    entry->item = 999;
    if (!file.has_path) entry->path.Clear();
    if (!file.tag) continue;
    entry->tag.Reset(HeapNew<TagBlock>());
    const Id3v1Texts& t = *file.tag;
    memcpy(entry->tag->title, (t.title + t.artist + t.album + t.genre).data(), sizeof(TagBlock));
  }
  const uint32_t order = 1 + dice.Roll(7);
  CatalogTree tree;
  TreeModel model(files);
  BuildTree(list, ToGroupingOrder(order), tree);
  model.Build(order);

  for (uint32_t step = 0;; ++step) {
    std::string got, want;
    std::vector<TreeNode> nodes;
    std::vector<ModelNode*> model_nodes;
    CollectText(tree, kNoNode, list, 0, &got, &nodes);
    CollectText(&model.root, 0, &want, &model_nodes);
    ASSERT_EQ(got, want) << "order " << order << ", step " << step;
    if (step == 8 || nodes.empty()) break;
    const uint32_t at = dice.Roll(static_cast<uint32_t>(nodes.size()));
    const bool whole = dice.OneIn(4);
    const TreeNode node = whole ? kNoNode : nodes[at];
    ModelNode* const model_node = whole ? &model.root : model_nodes[at];
    switch (dice.Roll(4)) {
      case 0: {
        const bool checked = dice.OneIn(2);
        SetChecksBelow(tree, node, checked);
        CheckBelow(model_node, checked);
        break;
      }
      case 1:
        InvertChecksBelow(tree, node);
        InvertBelow(model_node);
        model.root.checked = false;
        break;
      default:
        CheckBoxTapped(tree, nodes[at]);
        tree.SetChecked(nodes[at], !tree.IsChecked(nodes[at]));
        TapBox(model_nodes[at]);
    }
  }
  EntryList playlist;
  std::vector<size_t> checked;
  for (int time = 0; time < 2; ++time) {
    AddCheckedFiles(tree, list, &playlist);
    CheckedFiles(&model.root, &checked);
  }
  ASSERT_EQ(playlist.size(), checked.size());
  for (size_t i = 0; i < checked.size(); ++i) {
    const MediaEntry &got = playlist[i], &want = list[checked[i]];
    ASSERT_EQ(Utf8(got.path.c_str()), Utf8(want.path.c_str()));
    ASSERT_EQ(got.item, 1u);
    ASSERT_EQ(static_cast<bool>(got.tag), static_cast<bool>(want.tag));
    if (!got.tag) continue;
    ASSERT_EQ(memcmp(got.tag.get(), want.tag.get(), sizeof(TagBlock)), 0);
  }
}

TEST(Oracle, GroupingAndChecks) {
  ForCases(1000, Compare);
}

}  // namespace
}  // namespace kelvo::oracle
