// The folder order. A folder takes all entries not done yet that begin with its path, in either
// case: also those of a neighbour whose name only goes on where its own ends.
//
// What is meant is a walk: for a folder, over all entries in list order; one with a backslash
// behind the folder's path makes a subfolder, which at once takes everything that begins with its
// path, and so on inside; one without is a file of the folder. That is a walk over all entries for
// each folder, of which there are thousands. So each entry is led down from the root instead: into
// the first-made of the subfolders that it begins with; where there is none it makes one, or is a
// file there. The tree is the same: a subfolder takes what begins with its path and with none of
// those made before it, and one that is made later than an entry finds that entry done.
#include "base/text/wide.h"
#include "catalog/tree/build_tree.h"
#include "catalog/tree/hashing.h"

namespace kelvo {
namespace {

constexpr uint32_t kRoot = 0;  // position of the root among the folders; nobody's subfolder

struct Folder {
  const wchar_t* path;  // of the entry that made it; `length` characters, not terminated there
  size_t length;
  uint32_t parent;
  uint32_t hash;  // of the parent and of what the path adds to the parent's
  uint32_t next;  // the folder before it in the same slot; kRoot at the end
  TreeNode node;  // kNoNode as long as it has not been inserted
};

class Folders {
 public:
  explicit Folders(const EntryList& entries) noexcept : entries_(entries) {}

  // Finds the folder of every entry. False when memory is out.
  bool Assign() noexcept {
    if (!places_.Resize(entries_.size()) || !slots_.Resize(SlotsFor(entries_.size()))) return false;
    if (!folders_.Append({L"", 0, kRoot, 0, kRoot, kNoNode})) return false;
    for (size_t i = 0; i < entries_.size(); ++i) {
      if (entries_[i].path.has_value() && !FindPlace(entries_[i].path.get(), &places_[i])) {
        return false;
      }
    }
    return true;
  }

  void Insert(EntryList& entries, CatalogTree& tree) noexcept {
    for (size_t i = kRoot + 1; i < folders_.size(); ++i) AddFolder(folders_[i], tree);
    for (size_t i = 0; i < entries.size(); ++i) {
      const uint32_t place = places_[i];
      if (!entries[i].path.has_value() || !IsInserted(place)) continue;
      const wchar_t* name = FileNameOf(entries[i].path.get());
      entries[i].item = tree.Add(folders_[place].node, NodeKind::kFile, name);
    }
    for (uint32_t i = static_cast<uint32_t>(folders_.size()); i-- > 0;) {
      if (!IsInserted(i)) continue;
      tree.SortLabels(folders_[i].node);
      tree.SortFolders(folders_[i].node);
    }
  }

 private:
  // Leads the path down to its folder, which is made when it is not there.
  bool FindPlace(const wchar_t* path, uint32_t* place) noexcept {
    uint32_t here = kRoot;
    for (;;) {
      // Any character may stand between a folder's path and the name below it: the neighbours.
      size_t end = folders_[here].length;
      uint32_t hash = ExtendedHash(kHashSeed ^ here, FoldCase(path[end]));
      uint32_t first = kRoot;
      while (path[end] != 0) {
        ++end;
        const uint32_t found = FindChild(here, path, end, hash);
        if (found != kRoot && (first == kRoot || found < first)) first = found;
        if (path[end] == L'\\') break;
        hash = ExtendedHash(hash, FoldCase(path[end]));
      }
      if (first == kRoot) {
        if (path[end] == 0) break;
        first = static_cast<uint32_t>(folders_.size());
        uint32_t& slot = slots_[hash & (slots_.size() - 1)];
        if (!folders_.Append({path, end, here, hash, slot, kNoNode})) return false;
        slot = first;
      }
      here = first;
    }
    *place = here;
    return true;
  }

  // The subfolder whose path is the first `length` characters of `path`, which begins with that of
  // the parent; kRoot when there is none. There is one at most.
  uint32_t FindChild(uint32_t parent, const wchar_t* path, size_t length,
                     uint32_t hash) const noexcept {
    const size_t known = folders_[parent].length;
    uint32_t at = slots_[hash & (slots_.size() - 1)];
    for (; at != kRoot; at = folders_[at].next) {
      const Folder& folder = folders_[at];
      if (folder.hash == hash && folder.parent == parent && folder.length == length &&
          EqualNoCase(folder.path + known, path + known, length - known)) {
        break;
      }
    }
    return at;
  }

  // A folder that cannot be inserted takes everything in it along.
  bool IsInserted(uint32_t folder) const noexcept {
    return folder == kRoot || folders_[folder].node != kNoNode;
  }

  void CopyLabel(const Folder& folder, wchar_t (&label)[kTextCapacity]) const noexcept {
    const size_t name = folders_[folder.parent].length + 1;
    CopyWide(label, kTextCapacity, folder.path + name, folder.length - name);
  }

  void AddFolder(Folder& folder, CatalogTree& tree) noexcept {
    if (!IsInserted(folder.parent)) return;
    wchar_t label[kTextCapacity];
    CopyLabel(folder, label);
    folder.node = tree.Add(folders_[folder.parent].node, NodeKind::kFolder, label);
  }

  const EntryList& entries_;
  Array<uint32_t> places_;  // the folder of each entry
  Array<Folder> folders_;   // in the order in which they are made: parents first
  Array<uint32_t> slots_;   // by hash, the folder made last; kRoot for none
};

}  // namespace

void BuildFolders(EntryList& entries, CatalogTree& tree) noexcept {
  for (MediaEntry& entry : entries) entry.item = kNoNode;
  Folders folders(entries);
  if (folders.Assign()) folders.Insert(entries, tree);
}

}  // namespace kelvo
