// The group orders: for each entry that is not done a group node, and in it all entries from there
// on that have the same text. The entries are in no order and are not sorted; so that a group does
// not cost a walk over all that is left, each entry knows the next one whose text may be the same:
// those of one hash of the folded texts are linked, and the texts compared along the links only.
#include "base/text/ansi.h"
#include "catalog/media/entry_list.h"
#include "catalog/tree/build_tree.h"
#include "catalog/tree/hashing.h"

namespace kelvo {
namespace {

constexpr size_t kMaxLevels = 3;

void GroupText(NodeKind kind, const MediaEntry& entry, TagField& text) noexcept {
  switch (kind) {
    case NodeKind::kGenre:
      return GenreText(entry, text);
    case NodeKind::kAlbum:
      return AlbumText(entry, text);
    default:
      return ArtistText(entry, text);
  }
}

uint32_t FoldedHash(const char* text) noexcept {
  uint32_t hash = kHashSeed;
  for (; *text != 0; ++text) {
    hash = ExtendedHash(hash, static_cast<unsigned char>(FoldAscii(*text)));
  }
  return hash;
}

TreeNode AddGroup(CatalogTree& tree, TreeNode parent, NodeKind kind,
                  const TagField& text) noexcept {
  wchar_t label[kTagFieldBytes];
  AnsiToWide(text, kTagFieldBytes, label, kTagFieldBytes);
  return tree.Add(parent, kind, label);
}

void AddFile(CatalogTree& tree, TreeNode parent, MediaEntry& entry) noexcept {
  char title[kTextCapacity];
  wchar_t label[kTextCapacity];
  TitleText(entry, title);
  AnsiToWide(title, kTextCapacity, label, kTextCapacity);
  entry.item = tree.Add(parent, NodeKind::kFile, label);
}

class Grouping {
 public:
  Grouping(EntryList& entries, const NodeKind* kinds, size_t level_count,
           CatalogTree& tree) noexcept
      : entries_(entries), kinds_(kinds), level_count_(level_count), tree_(tree) {}

  void Run() noexcept {
    if (!done_.Resize(entries_.size()) || !slots_.Resize(SlotsFor(entries_.size()))) return;
    if (!groups_.Reserve(level_count_ * entries_.size())) return;
    for (size_t i = 0; i < level_count_; ++i) {
      if (!levels_[i].Reserve(entries_.size())) return;
    }
    for (size_t i = 0; i < entries_.size(); ++i) {
      if (entries_[i].path.has_value()) AddMember(0, static_cast<uint32_t>(i));
    }
    Walk(0, kNoNode);
    for (MediaEntry& entry : entries_) {
      if (entry.item != kNoNode) AddFile(tree_, entry.item, entry);
    }
    tree_.SortLabels(kNoNode);
    for (const TreeNode group : groups_) tree_.SortLabels(group);
  }

 private:
  // An entry of the group whose inside is being walked.
  struct Member {
    uint32_t entry;
    uint32_t hash;  // of its text at this level
    uint32_t next;  // the position of the next member in the same slot; kNoMember: none
  };
  using Members = Array<Member>;
  static constexpr uint32_t kNoMember = 0xFFFFFFFFu;

  void AddMember(size_t level, uint32_t index) noexcept {
    TagField text;
    GroupText(kinds_[level], entries_[index], text);
    // Room was reserved for all entries.
    static_cast<void>(levels_[level].Append({index, FoldedHash(text), kNoMember}));
  }

  void LinkMembers(Members& members) noexcept {
    const size_t slots = SlotsFor(members.size());
    for (size_t i = 0; i < slots; ++i) slots_[i] = kNoMember;
    for (size_t i = members.size(); i-- > 0;) {
      uint32_t& slot = slots_[members[i].hash & (slots - 1)];
      members[i].next = slot;
      slot = static_cast<uint32_t>(i);
    }
  }

  // Makes the groups of the members of levels_[level] under `parent`; the item word of each entry
  // becomes the innermost one. At most kMaxLevels deep.
  void Walk(size_t level, TreeNode parent) noexcept {
    Members& here = levels_[level];
    LinkMembers(here);
    for (uint32_t at = 0; at < here.size(); ++at) {
      if (done_[here[at].entry]) continue;
      TagField text;
      GroupText(kinds_[level], entries_[here[at].entry], text);
      const TreeNode node = AddGroup(tree_, parent, kinds_[level], text);
      // Room was reserved.
      if (node != kNoNode) static_cast<void>(groups_.Append(node));
      const bool is_last = level + 1 == level_count_;
      if (!is_last) static_cast<void>(levels_[level + 1].Resize(0));
      for (uint32_t other = at; other != kNoMember; other = here[other].next) {
        const uint32_t index = here[other].entry;
        if (here[other].hash != here[at].hash || !HasText(level, index, text)) continue;
        if (node == kNoNode) {
          done_[index] = 1;  // nowhere to go
        } else if (!is_last) {
          AddMember(level + 1, index);
        } else {
          entries_[index].item = node;
          done_[index] = 1;
        }
      }
      if (node != kNoNode && !is_last) Walk(level + 1, node);
    }
  }

  bool HasText(size_t level, uint32_t index, const TagField& text) const noexcept {
    TagField other;
    GroupText(kinds_[level], entries_[index], other);
    return EqualAsciiNoCase(text, other);
  }

  EntryList& entries_;
  const NodeKind* kinds_;
  size_t level_count_;
  CatalogTree& tree_;
  Array<uint8_t> done_;  // one flag an entry
  Members levels_[kMaxLevels];
  Array<TreeNode> groups_;
  Array<uint32_t> slots_;  // while members are linked: by hash, the first one found from the end
};

}  // namespace

void BuildGroups(EntryList& entries, const NodeKind* levels, size_t level_count,
                 CatalogTree& tree) noexcept {
  for (MediaEntry& entry : entries) entry.item = kNoNode;
  Grouping(entries, levels, level_count, tree).Run();
}

void BuildTree(EntryList& entries, GroupingOrder order, CatalogTree& tree) noexcept {
  constexpr NodeKind kGenre = NodeKind::kGenre;
  constexpr NodeKind kArtist = NodeKind::kArtist;
  constexpr NodeKind kAlbum = NodeKind::kAlbum;
  struct Levels {
    NodeKind kinds[3];
    size_t count;
  };
  static constexpr Levels kLevels[] = {
      {{kGenre, kArtist, kAlbum}, 3},
      {{kGenre, kAlbum, kArtist}, 3},
      {{kArtist, kAlbum}, 2},
      {{kAlbum, kArtist}, 2},
      {{kAlbum}, 1},
      {{kArtist}, 1},
  };
  if (order == GroupingOrder::kFolders) return BuildFolders(entries, tree);
  const Levels& levels = kLevels[static_cast<uint32_t>(order) - 1];
  BuildGroups(entries, levels.kinds, levels.count, tree);
}

}  // namespace kelvo
