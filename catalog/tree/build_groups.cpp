// The group orders: for each entry that is not done a group node, and in it all entries from there
// on that have the same text. The entries are in no order and are not sorted, so each group costs a
// walk over what is left; what makes the walk cheap is that it compares 32-bit hashes of the folded
// texts, and the texts themselves only where these agree.
#include <string.h>

#include "base/text/ansi.h"
#include "catalog/media/display_text.h"
#include "catalog/tree/build_tree.h"

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
  uint32_t hash = 2166136261u;
  for (; *text != 0; ++text) {
    hash = (hash ^ static_cast<unsigned char>(FoldAscii(*text))) * 16777619u;
  }
  return hash;
}

// The next place from `at` with this hash, or `count`. Whole blocks first: compilers turn these
// into a few wide comparisons.
size_t FindHash(const uint32_t* hashes, size_t at, size_t count, uint32_t hash) noexcept {
  constexpr size_t kBlock = 16;
  for (; count - at >= kBlock; at += kBlock) {
    uint32_t found = 0;
    for (size_t i = 0; i < kBlock; ++i) found |= hashes[at + i] == hash;
    if (found) break;
  }
  while (at < count && hashes[at] != hash) ++at;
  return at;
}

TreeNode AddGroup(TreeSink& sink, TreeNode parent, NodeKind kind, const TagField& text) noexcept {
  wchar_t label[kTagFieldBytes];
  AnsiToWide(text, kTagFieldBytes, label, kTagFieldBytes);
  return sink.Add(parent, kind, label);
}

void AddFile(TreeSink& sink, TreeNode parent, MediaEntry& entry) noexcept {
  char title[kTextCapacity];
  wchar_t label[kTextCapacity];
  TitleText(entry, title);
  AnsiToWide(title, kTextCapacity, label, kTextCapacity);
  entry.item = sink.Add(parent, NodeKind::kFile, label);
}

class Grouping {
 public:
  Grouping(EntryList& entries, const NodeKind* kinds, size_t level_count, TreeSink& sink) noexcept
      : entries_(entries), kinds_(kinds), level_count_(level_count), sink_(sink) {}

  void Run() noexcept {
    if (!done_.Resize(entries_.size())) return;
    for (size_t i = 0; i < level_count_; ++i) {
      if (!levels_[i].members.Reserve(entries_.size()) ||
          !levels_[i].hashes.Reserve(entries_.size())) {
        return;
      }
    }
    for (size_t i = 0; i < entries_.size(); ++i) {
      if (entries_[i].path.has_value()) AddMember(0, static_cast<uint32_t>(i));
    }
    Walk(0, kNoNode);
  }

 private:
  // The members of the group whose inside is being walked, and the hash of each one's text at the
  // level below.
  struct Level {
    Array<uint32_t> members;
    Array<uint32_t> hashes;
  };

  void AddMember(size_t level, uint32_t index) noexcept {
    TagField text;
    GroupText(kinds_[level], entries_[index], text);
    // Room was reserved for all entries.
    static_cast<void>(levels_[level].members.Append(index));
    static_cast<void>(levels_[level].hashes.Append(FoldedHash(text)));
  }

  // Places the members of levels_[level] under `parent`. At most kMaxLevels deep.
  void Walk(size_t level, TreeNode parent) noexcept {
    const Level& here = levels_[level];
    for (size_t at = 0; at < here.members.size(); ++at) {
      if (done_[here.members[at]]) continue;
      TagField text;
      GroupText(kinds_[level], entries_[here.members[at]], text);
      const TreeNode node = AddGroup(sink_, parent, kinds_[level], text);
      const bool is_last = level + 1 == level_count_;
      if (!is_last) {
        static_cast<void>(levels_[level + 1].members.Resize(0));
        static_cast<void>(levels_[level + 1].hashes.Resize(0));
      }
      const uint32_t hash = here.hashes[at];
      const uint32_t* hashes = here.hashes.data();
      const size_t count = here.members.size();
      for (size_t other = at; (other = FindHash(hashes, other, count, hash)) < count; ++other) {
        const uint32_t index = here.members[other];
        if (done_[index] || !HasText(level, index, text)) continue;
        if (node == kNoNode) {
          done_[index] = 1;  // nowhere to go
        } else if (!is_last) {
          AddMember(level + 1, index);
        } else {
          AddFile(sink_, node, entries_[index]);
          done_[index] = 1;
        }
      }
      if (node != kNoNode && !is_last) Walk(level + 1, node);
    }
  }

  bool HasText(size_t level, uint32_t index, const TagField& text) const noexcept {
    TagField other;
    GroupText(kinds_[level], entries_[index], other);
    return CompareNoCase(text, other) == 0;
  }

  EntryList& entries_;
  const NodeKind* kinds_;
  size_t level_count_;
  TreeSink& sink_;
  Array<uint8_t> done_;  // one flag an entry
  Level levels_[kMaxLevels];
};

}  // namespace

void BuildGroups(EntryList& entries, const NodeKind* levels, size_t level_count,
                 TreeSink& sink) noexcept {
  for (MediaEntry& entry : entries) entry.item = kNoNode;
  Grouping(entries, levels, level_count, sink).Run();
}

}  // namespace kelvo
