#include "catalog/tree/checks.h"

#include "catalog/tree/build_tree.h"
#include "catalog/tree/tree_place.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <vector>

#include "tests/catalog/text_tree.h"
#include "tests/support/faults.h"

namespace kelvo {
namespace {

using test::PathOf;
using test::Utf8;

// "A,A/m"
std::set<std::string> Names(const std::string& list) {
  std::stringstream names(list);
  std::set<std::string> all;
  for (std::string name; std::getline(names, name, ',');) all.insert(name);
  return all;
}

// Shows a tree, with some groups open.
class Opened final : public TreeView {
 public:
  Opened(const CatalogTree& tree, const char* open) : tree_(tree), open_(Names(open)) {}
  void CopyLabel(TreeNode node, wchar_t (&label)[kTextCapacity]) noexcept override {
    CopyWide(label, kTextCapacity, tree_.Label(node));
  }
  bool IsOpen(TreeNode node) noexcept override { return open_.count(PathOf(tree_, node)) != 0; }
  void Open(TreeNode node) noexcept override { open_.insert(PathOf(tree_, node)); }

 private:
  const CatalogTree& tree_;
  std::set<std::string> open_;
};

// Artists with their albums, a letter each: what is checked and open before a file's tag changes is
// so afterwards, as far as it is still there.
TEST(TreePlaceTest, IsKeptWhenAFileMoves) {
  const struct {
    const char *checked, *open;  // nodes by their paths
    const char *moved, *artist;
    const char* want;
  } cases[] = {
      {"A,A/m,A/m/1,A/m/2", "A,B", "1", "A", "A x open/m x/1 x/2 x;B open/m/3;/n/4;"},
      {"A,A/m,A/m/1,A/m/2,B/m,B/m/3", "A,A/m,B/n", "2", "B",
       "A x open/m x open/1 x;B/m x/2 x/3 x;/n open/4;"},
      {"B,B/m,B/m/3,B/n,B/n/4", "B", "1", "B", "A/m/2;B open/m/1/3 x;/n x/4 x;"},
      {"B/n", "A/m,B/n", "3", "0", "0/m/3;A/m open/1/2;B/n x open/4;"},
      {"A/m/2,B/n/4", "B,B/m", "3", "C", "A/m/1/2 x;B open/n/4 x;C/m/3;"},
      {"B/m/3", "B", "4", "b", "A/m/1/2;B open/m/3 x;/n/4;"},
      {"", "A", "1", "a", "a open/m/1/2;B/m/3;/n/4;"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.want);
    EntryList media;
    for (const char* file : {"A/m/1", "A/m/2", "B/m/3", "B/n/4"}) {
      ASSERT_TRUE(media.Add(test::Wide(file)));
      media.back().tag.Reset(HeapNew<TagBlock>());
      media.back().tag->artist[0] = file[0];
      media.back().tag->album[0] = file[2];
      media.back().tag->title[0] = file[4];
    }
    CatalogTree before;
    BuildTree(media, GroupingOrder::kArtistAlbum, before);
    Opened opened_before(before, c.open);
    for (TreeNode node = 1; node <= before.last(); ++node) {
      before.SetChecked(node, Names(c.checked).count(PathOf(before, node)) != 0);
    }
    TreePlace place;
    place.Remember(before, opened_before, media);
    MediaEntry& moved = media[static_cast<size_t>(c.moved[0] - '1')];
    moved.tag->artist[0] = c.artist[0];
    CatalogTree after;
    BuildTree(media, GroupingOrder::kArtistAlbum, after);
    Opened opened(after, "");
    place.Restore(after, opened, media, moved);
    std::string text;
    const auto state = [&](TreeNode node) {
      return Utf8(after.Label(node)) + (after.IsChecked(node) ? " x" : "") +
             (opened.IsOpen(node) ? " open" : "");
    };
    const auto children = [&](TreeNode node) {
      std::vector<TreeNode> all;
      for (node = after.FirstChild(node); node; node = after.NextSibling(node)) all.push_back(node);
      return all;
    };
    for (const TreeNode artist : children(kNoNode)) {
      text += state(artist);
      for (const TreeNode album : children(artist)) {
        text += "/" + state(album);
        for (const TreeNode file : children(album)) text += "/" + state(file);
        text += ";";
      }
    }
    EXPECT_EQ(text, c.want);
  }
}

// Files of a tree, in an order of their own in the list; one has no node, one stands there twice.
class CheckedFilesTest : public testing::Test {
 protected:
  CheckedFilesTest() {
    const TreeNode group = tree_.Add(kNoNode, NodeKind::kArtist, L"A");
    for (const wchar_t* path : {L"\\none", L"\\c", L"\\b", L"\\a", L"\\a twin"}) {
      EXPECT_TRUE(media_.Add(path));
      media_.back().tag.Reset(HeapNew<TagBlock>());
    }
    for (size_t i = 3; i > 0; --i) media_[i].item = tree_.Add(group, NodeKind::kFile, L"f");
    media_[4].item = media_[3].item;
    media_[2].tag.Reset();
    media_[3].tag->title[0] = 'T';
    for (size_t i = 3; i > 1; --i) tree_.SetChecked(media_[i].item, true);
    tree_.SetChecked(group, true);
    // A file that the list does not know.
    tree_.SetChecked(tree_.Add(kNoNode, NodeKind::kFile, L"f"), true);
  }
  CatalogTree tree_;
  EntryList media_;
};

TEST_F(CheckedFilesTest, AreAddedInTheTreesOrderAsFarAsMemoryGoes) {
  std::set<std::string> seen;
  test::Sweep([&](long n) {
    EntryList playlist;
    bool failed;
    {
      const test::HeapFaults faults(n);
      AddCheckedFiles(tree_, media_, &playlist);
      failed = faults.triggered();
    }
    AddCheckedFiles(tree_, media_, &playlist);  // however often
    std::string added;
    for (const MediaEntry& entry : playlist) {
      added += Utf8(entry.path.c_str()) + (entry.tag ? entry.tag->title : "-");
      EXPECT_EQ(entry.item, kEntryFlag);
      EXPECT_NE(entry.tag.get(), media_[3].tag.get());
    }
    EXPECT_EQ(added == "\\aT\\b-\\aT\\b-", !failed || n < 2) << n << ": " << added;
    seen.insert(added);
    return failed;
  });
  // All (without memory for a table or for growing at once, too), one file's or its tag missing.
  EXPECT_EQ(seen, (std::set<std::string>{"\\aT\\b-\\aT\\b-", "\\b-\\aT\\b-", "\\a-\\b-\\aT\\b-",
                                         "\\aT\\aT\\b-"}));
}

TEST_F(CheckedFilesTest, AreFoundByTheirNodes) {
  EXPECT_EQ(IndexOfNode(media_, media_[4].item), 3u) << "the first of twins";
  EXPECT_EQ(EntryOfNode(media_, media_[1].item), &media_[1]);
  media_[0].item = 777;
  EXPECT_EQ(EntryOfNode(media_, 777), &media_[0]);
  EXPECT_EQ(EntryOfNode(media_, kNoNode), nullptr);
  EXPECT_EQ(EntryOfNode(media_, 12345), nullptr);
  EXPECT_EQ(IndexOfNode(media_, 12345), media_.size());
}

}  // namespace
}  // namespace kelvo
