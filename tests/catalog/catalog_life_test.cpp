// The catalog's lists from the first scan to the end, as the pages use them one after the other,
// with every request for memory and every call of a file failing in turn. The sanitizers watch.
#include <gtest/gtest.h>

#include <optional>

#include "catalog/lists/current_playlist.h"
#include "catalog/lists/device_scan.h"
#include "catalog/lists/file_changes.h"
#include "catalog/tag_editor/tag_edit.h"
#include "catalog/tree/build_tree.h"
#include "catalog/tree/checks.h"
#include "playlist/add_path.h"
#include "playlist/m3u_writer.h"
#include "playlist/save_dialog_state.h"
#include "tests/catalog/text_tree.h"
#include "tests/support/fake_information.h"
#include "tests/support/faults.h"
#include "tests/support/id3v1_tag.h"
#include "tests/support/memory_files.h"

namespace kelvo {
namespace {

using test::HeapFaults;
using test::Id3v1Tag;
using test::MemoryFiles;
using test::TextTree;
using test::Utf8;

class AllSelected final : public SelectableItems {
 public:
  bool IsSelected(size_t) noexcept override { return true; }
  void SetSelected(size_t, bool) noexcept override {}
  bool IsFocused(size_t) noexcept override { return false; }
  void SetFocused(size_t) noexcept override {}
  void Remove(size_t) noexcept override {}
  void Swapped(size_t, size_t) noexcept override {}
};

class CatalogLife {
 public:
  CatalogLife() {
    files.PutFolder("\\M");
    files.Put("\\M\\a.mp3", "x" + Id3v1Tag("A", "Art", "Alb", 8));
    files.Put("\\M\\b.ogg", "ogg");
    files.Put("\\M\\c.mp3", "plain");
    files.Put("\\M\\l.m3u", "a.mp3\r\nc.mp3\r\n\\M\\n.pls\r\n");
    files.Put("\\M\\n.pls", "File1=\\M\\b.ogg\r\n");
    information_.known["\\M\\b.ogg"] = {"Ogg", "Art", "Zeta", "Jazz"};
  }

  // What a user might do. Returns what the host is told at the end.
  std::string Live() {
    Scan();
    Group(GroupingOrder::kGenreArtistAlbum);
    AddAll();
    AddPlaylists();
    EditTag("\\M\\a.mp3");
    Group(GroupingOrder::kArtist);
    Delete("\\M\\a.mp3");
    Group(GroupingOrder::kFolders);  // the last file twice
    AddAll();
    Delete("\\M\\c.mp3");
    Delete("\\M\\c.mp3");
    Group(GroupingOrder::kAlbum);
    Rename();
    Sort();
    Save();
    const std::string told = Tell();
    Scan();
    Group(GroupingOrder::kAlbumArtist);
    AllSelected items;
    RemoveSelected(current_, items);
    EXPECT_TRUE(current_.empty());
    media_.Clear();
    playlists_.Clear();
    return told;
  }

  MemoryFiles files;

 private:
  void Scan() {
    media_.Clear();
    playlists_.Clear();
    ScanFolder(files, information_, L"", {&media_, &playlists_});
  }
  void Group(GroupingOrder order) {
    tree_ = TextTree();
    BuildTree(media_, order, tree_);
  }
  void AddAll() {
    SetChecksBelow(tree_, kNoNode, true);
    AddCheckedFiles(tree_, media_, &current_);
  }
  void AddPlaylists() {
    ChainGuard guard;
    const PlaylistSources sources = {files, information_, &guard};
    for (size_t i = 0; i < playlists_.size(); ++i) AddPath(sources, playlists_[i], &current_);
  }
  MediaEntry* EntryOf(const char* path) {
    for (MediaEntry& entry : media_) {
      if (entry.item != kNoNode && Utf8(entry.path.c_str()) == path) {
        return EntryOfNode(media_, entry.item);
      }
    }
    return nullptr;
  }
  void EditTag(const char* path) {
    MediaEntry* entry = EntryOf(path);
    if (!entry) return;
    TagEdit edit;
    edit.Load(files, *entry);
    TagTexts texts;
    CopyWide(texts.title, 31, L"New");
    edit.Build(texts, 8);
    if (!edit.Write(files, entry->path.c_str())) return;
    entry->tag.Reset();
    ReadId3v1(files, entry);
    CopyTagToPlaylist(*entry, current_);
  }
  void Delete(const char* path) {
    const MediaEntry* entry = EntryOf(path);
    if (!entry || !files.Delete(entry->path.c_str())) return;
    DeleteEntry(media_, IndexOfNode(media_, entry->item));
  }
  void Rename() {
    if (playlists_.size() == 0) return;
    HeapText renamed = RenamedPath(playlists_[0], L"z.m3u");
    if (!renamed.has_value()) return;
    files.Move(playlists_[0], renamed.get());
    playlists_.Replace(0, std::move(renamed));
  }
  void Sort() {
    Array<size_t> order;
    if (!order.Resize(current_.size())) return;
    for (size_t i = 0; i < order.size(); ++i) order[i] = order.size() - 1 - i;
    Reorder(current_, order);
  }
  void Save() {
    SaveDialogState dialog;
    CopyWide(dialog.folder, kTextCapacity, L"\\M");
    CopyWide(dialog.name, kTextCapacity, L"saved");
    dialog.UpdatePath();
    if (dialog.CheckPath(files) == SaveDialogState::Check::kEmpty) return;
    if (dialog.ProveWritable(files)) WriteM3u(files, dialog.path, current_);
  }
  std::string Tell() {
    std::string told;
    for (MediaEntry& entry : current_) EXPECT_TRUE(entry.path.has_value());
    HandOverEntries({&Hear, reinterpret_cast<HostWord>(&told)}, HandOver::kEnqueue, current_);
    return told;
  }
  static void Hear(const wchar_t* path, HostWord told) {
    if (path == CatalogEndOfList()) return;
    *reinterpret_cast<std::string*>(told) += Utf8(path) + ";";
  }

  test::FakeInformation information_;
  EntryList media_;
  PlaylistFiles playlists_;
  EntryList current_;
  TextTree tree_;
};

// Backwards: checked in the tree; through l.m3u, which names n.pls, and n.pls; checked again.
constexpr char kTold[] =
    "\\M\\c.mp3;\\M\\c.mp3;\\M\\b.ogg;\\M\\b.ogg;\\M\\b.ogg;\\M\\c.mp3;\\M\\a.mp3;"
    "\\M\\c.mp3;\\M\\b.ogg;\\M\\a.mp3;";

TEST(CatalogLifeTest, GoesItsWay) {
  CatalogLife life;
  EXPECT_EQ(life.Live(), kTold);
  EXPECT_FALSE(life.files.Find("\\M\\a.mp3"));
  EXPECT_TRUE(life.files.Find("\\M\\z.m3u"));
  EXPECT_EQ(life.files.Find("\\M\\saved.m3u")->bytes.substr(0, 10), "#EXTM3U:\r\n");
}

TEST(CatalogLifeTest, SurvivesEveryFault) {
  const struct {
    const char* name;
    bool memory, from_then_on;
  } kinds[] = {{"a request", true, false},
               {"all requests", true, true},
               {"a call", false, false},
               {"all calls", false, true}};
  for (const auto& kind : kinds) {
    for (long n = 0;; ++n) {
      SCOPED_TRACE(testing::Message() << kind.name << ", " << n);
      ASSERT_LT(n, 1000);
      CatalogLife life;
      std::optional<HeapFaults> faults;
      if (kind.memory) {
        faults.emplace(n,
                       kind.from_then_on ? HeapFaults::Mode::kFromThenOn : HeapFaults::Mode::kOnce);
      } else {
        life.files.FailAfter(n, kind.from_then_on);
      }
      const std::string told = life.Live();
      const bool triggered = faults ? faults->triggered() : life.files.fault_triggered();
      EXPECT_EQ(life.files.open_now, 0);
      // Nobody has touched these.
      EXPECT_EQ(life.files.Find("\\M\\b.ogg")->bytes, "ogg");
      EXPECT_TRUE(life.files.Find("\\M\\l.m3u") || life.files.Find("\\M\\z.m3u"));
      if (triggered) continue;
      EXPECT_EQ(told, kTold);
      break;
    }
  }
}

}  // namespace
}  // namespace kelvo
