// The catalog's tree as it is described: walks over all files for every node, nodes inserted in
// sorted place, a done flag a file.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/oracles/id3v1_model.h"
#include "tests/oracles/model_text.h"

namespace kelvo::oracle {

struct GroupedFile {
  std::string path;
  bool has_path = true;
  std::optional<Id3v1Texts> tag;
};

struct ModelNode {
  char kind = 'D';  // 'G'enre, 'L' album, 'A'rtist, 'F'ile, 'D' folder
  std::string label;
  size_t file = 0;  // of a file node: which one
  bool checked = false;
  ModelNode* parent = nullptr;
  std::vector<ModelNode*> children;
};

class TreeModel {
 public:
  explicit TreeModel(const std::vector<GroupedFile>& files) : files_(files) {}
  ~TreeModel() { Free(&root); }
  TreeModel(const TreeModel&) = delete;
  TreeModel& operator=(const TreeModel&) = delete;

  ModelNode root;

  void Build(uint32_t order) {
    static const char* const kLevels[] = {"GAL", "GLA", "AL", "LA", "L", "A"};
    done_.assign(files_.size(), false);
    for (size_t i = 0; i < files_.size(); ++i) done_[i] = !files_[i].has_path;
    if (order == 7) return Folder(&root, "");
    Group(&root, kLevels[order - 1], [](size_t) { return true; });
  }

 private:
  static void Free(ModelNode* node) {
    for (ModelNode* child : node->children) Free(child), delete child;
  }

  // In its place by the label, behind equal ones; but a folder stands before a file.
  ModelNode* Insert(ModelNode* parent, char kind, const std::string& label, size_t file = 0) {
    auto* const node = new ModelNode{kind, label, file, false, parent, {}};
    const std::string folded = Folded(label);
    auto at = parent->children.begin();
    while (at != parent->children.end() &&
           (Folded((*at)->label) < folded ||
            (Folded((*at)->label) == folded && (kind == 'F' || (*at)->kind != 'F')))) {
      ++at;
    }
    parent->children.insert(at, node);
    return node;
  }

  std::string TextOf(size_t i, char level) const {
    return TextOrUnknown(files_[i].tag, level == 'G'   ? &Id3v1Texts::genre
                                        : level == 'A' ? &Id3v1Texts::artist
                                                       : &Id3v1Texts::album);
  }
  // 8-bit texts know the case of these letters alone.
  static bool SameText(const std::string& a, const std::string& b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
             const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; };
             return lower(x) == lower(y);
           });
  }

  void Group(ModelNode* parent, std::string levels, const std::function<bool(size_t)>& inside) {
    for (size_t i = 0; i < files_.size(); ++i) {
      if (done_[i] || !inside(i)) continue;
      if (levels.empty()) {
        Insert(parent, 'F', TitleModel(files_[i].tag, files_[i].path), i);
        done_[i] = true;
        continue;
      }
      const std::string text = TextOf(i, levels[0]);
      const auto belongs = [&](size_t k) {
        return inside(k) && SameText(TextOf(k, levels[0]), text);
      };
      Group(Insert(parent, levels[0], text), levels.substr(1), belongs);
    }
  }

  void Folder(ModelNode* parent, const std::string& folder) {
    const auto begins = [&](size_t i, const std::string& with) {
      return Folded(files_[i].path.substr(0, with.size())) == Folded(with);
    };
    for (size_t i = 0; i < files_.size(); ++i) {
      if (done_[i] || !begins(i, folder)) continue;
      const std::string& path = files_[i].path;
      const size_t slash = path.find('\\', folder.size() + 1);
      if (slash != std::string::npos) {
        const std::string cut = path.substr(0, slash);
        Folder(Insert(parent, 'D', cut.substr(folder.size() + 1)), cut);
        continue;
      }
      Insert(parent, 'F', path.substr(path.rfind('\\') + 1), i);
      done_[i] = true;
    }
    // Neighbours that are both folders change places until none of them is in the wrong one.
    auto& all = parent->children;
    for (size_t rounds = all.size(); rounds > 0; --rounds) {
      for (size_t i = 1; i < all.size(); ++i) {
        if (all[i - 1]->kind == 'D' && all[i]->kind == 'D' &&
            Folded(all[i]->label) < Folded(all[i - 1]->label)) {
          std::swap(all[i - 1], all[i]);
        }
      }
    }
  }

  const std::vector<GroupedFile>& files_;
  std::vector<bool> done_;
};

}  // namespace kelvo::oracle
