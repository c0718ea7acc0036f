// The folder order. A folder takes everything that begins with its path, letter by letter: also
// the files of a neighbour whose name goes on where its own ends.
#include "catalog/tree/build_tree.h"

#include "base/text/wide.h"

namespace kelvo {
namespace {

class Folders {
 public:
  Folders(EntryList& entries, TreeSink& sink) noexcept : entries_(entries), sink_(sink) {}

  void Run() noexcept {
    if (!done_.Resize(entries_.size()) || !lengths_.Resize(entries_.size())) return;
    for (size_t i = 0; i < entries_.size(); ++i) {
      done_[i] = !entries_[i].path.has_value();
      lengths_[i] = WideLength(entries_[i].path.c_str());
    }
    Walk(kNoNode, L"", 0);
  }

 private:
  // `folder` has `length` characters and is not terminated there; it points into an entry's path.
  // The depth is bounded by the number of backslashes in a path.
  void Walk(TreeNode parent, const wchar_t* folder, size_t length) noexcept {
    for (size_t i = 0; i < entries_.size(); ++i) {
      if (done_[i]) continue;
      if (!BeginsWith(i, folder, length)) continue;
      const wchar_t* path = entries_[i].path.c_str();
      const wchar_t* rest = path[length] != 0 ? path + length + 1 : path + length;
      const wchar_t* slash = FindWide(rest, L'\\');
      if (!slash) {
        entries_[i].item = sink_.Add(parent, NodeKind::kFile, FileNameOf(path));
        done_[i] = 1;
        continue;
      }
      const size_t cut = static_cast<size_t>(slash - path);
      const TreeNode node = AddFolder(parent, rest, static_cast<size_t>(slash - rest));
      if (node != kNoNode) {
        Walk(node, path, cut);
      } else {
        for (size_t k = i; k < entries_.size(); ++k) {
          if (BeginsWith(k, path, cut)) done_[k] = 1;
        }
      }
    }
    sink_.SortFolders(parent);
  }

  TreeNode AddFolder(TreeNode parent, const wchar_t* name, size_t length) noexcept {
    wchar_t label[kTextCapacity];
    CopyWide(label, kTextCapacity, name, length);
    return sink_.Add(parent, NodeKind::kFolder, label);
  }

  // From the end: neighbouring folders differ there, and most comparisons are with these.
  bool BeginsWith(size_t index, const wchar_t* folder, size_t length) const noexcept {
    if (lengths_[index] < length) return false;
    const wchar_t* path = entries_[index].path.c_str();
    while (length > 0 && FoldAscii(path[length - 1]) == FoldAscii(folder[length - 1])) --length;
    return length == 0;
  }

  EntryList& entries_;
  TreeSink& sink_;
  Array<uint8_t> done_;  // one flag an entry
  Array<size_t> lengths_;
};

}  // namespace

void BuildFolders(EntryList& entries, TreeSink& sink) noexcept {
  for (MediaEntry& entry : entries) entry.item = kNoNode;
  Folders(entries, sink).Run();
}

}  // namespace kelvo
