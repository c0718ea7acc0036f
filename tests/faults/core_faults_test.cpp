// What the portable rooms do with files and memory, with every request and every call of files
// failing in turn, once or from then on: the result is the whole one, or what is left of it, no
// file stays open, and the next time it is the whole one.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <optional>

#include "catalog/lists/current_playlist.h"
#include "catalog/lists/device_lists.h"
#include "catalog/media/id3v1.h"
#include "catalog/tag_editor/tag_edit.h"
#include "catalog/tree/build_tree.h"
#include "catalog/tree/checks.h"
#include "catalog/tree/tree_place.h"
#include "eq/presets_feature.h"
#include "input/vorbis/decoder_heap.h"
#include "input/vorbis/ogg_vorbis_plugin.h"
#include "input/vorbis/vorbis_stream.h"
#include "playlist/playlist_files.h"
#include "skins/skin_feature.h"
#include "tests/support/fake_information.h"
#include "tests/support/faults.h"
#include "tests/support/id3v1_tag.h"
#include "tests/support/media_files.h"
#include "tests/support/memory_files.h"
#include "tests/support/wide_text.h"
#include "tests/support/zip_builder.h"

namespace kelvo {
namespace {

using test::HeapFaults;
using test::MemoryFiles;
using test::Utf8;

const std::string kBitmap(5000, 'b');

void Fill(MemoryFiles& files) {
  files = MemoryFiles();
  for (const char* folder : {"\\m", "\\s", "\\V", "\\V\\presets"}) files.PutFolder(folder);
  for (const char* name : {"one", "two"}) {
    files.Put(std::string("\\m\\") + name + ".mp3", "x" + test::Id3v1Tag(name, "Sine", "Waves", 8));
  }
  for (const char* name : {"sample", "chained"}) {
    const std::vector<char> bytes = test::ReadMedia(std::string(name) + ".ogg");
    files.Put(std::string("\\m\\") + name + ".ogg", {bytes.begin(), bytes.end()});
  }
  files.Put("\\m\\a.m3u", "one.mp3\r\n");
  files.Put("\\s\\main.bmp", kBitmap);
  files.Put("\\s.zip", test::ZipBuilder()
                           .Add({"MAIN.BMP", "shadowed"})
                           .Add({"other", std::string(9000, 'o'), false})
                           .Add({"main.bmp", kBitmap})
                           .Bytes());
  files.Put("\\V\\presets\\Rock.eqf", "old");
}

std::string Paths(const EntryList& list) {
  std::string all;
  for (const MediaEntry& entry : list) {
    all += Utf8(entry.path.c_str()) + (entry.tag ? std::string(" ") + entry.tag->title : "") + "\n";
  }
  return all;
}
std::string Skin(MemoryFiles& files, bool zipped) {
  uint32_t bytes = 1;
  SkinReaderFeature skins(files);
  void* const block = zipped ? skins.ReadFromArchive(L"\\s.zip", 5, &bytes)
                             : skins.ReadFromFolder(L"\\s", 5, &bytes);
  const std::string read(static_cast<char*>(block), bytes);
  free(block);
  return read;
}
std::string Bytes(MemoryFiles& files, const std::string& path) {
  const MemoryFiles::File* file = files.Find(path);
  return file ? file->bytes : "";
}

class Always final : public PresetPrompts {
 public:
  bool AskName(WindowHandle, wchar_t (&name)[kTextCapacity]) noexcept override {
    CopyWide(name, kTextCapacity, L"Rock");
    return true;
  }
  bool ConfirmOverwrite(WindowHandle) noexcept override { return true; }
};
class GoOn final : public ScanProgress {
 public:
  bool GoesOn(size_t) noexcept override { return true; }
};

// Without the length, which is that of what can be read.
std::string Information(MemoryFiles& files, const wchar_t* path) {
  OggVorbisPlugin plugin(files);
  wchar_t texts[4][kMaxText] = {};
  MediaInfo info = {};
  if (!plugin.GetFileInfo(path, texts[0], texts[1], &info, nullptr, nullptr, texts[2], texts[3]))
    return "";
  std::string all = std::to_string(info.sample_rate);
  for (const wchar_t* text : texts) all += "|" + Utf8(text);
  return all;
}

class AllOpen final : public TreeView {
 public:
  explicit AllOpen(const CatalogTree& tree) : tree_(tree) {}
  void CopyLabel(TreeNode node, wchar_t (&label)[kTextCapacity]) noexcept override {
    CopyWide(label, kTextCapacity, tree_.Label(node));
  }
  bool IsOpen(TreeNode) noexcept override { return true; }
  void Open(TreeNode) noexcept override {}

 private:
  const CatalogTree& tree_;
};

// The tree of all that is found, everything in it checked, built once more and added, and the list
// written.
std::string Collect(MemoryFiles& files) {
  test::FakeInformation information;
  EntryList media, current;
  PlaylistFiles playlists;
  GoOn progress;
  ScanFolder(files, information, L"", {&media, &playlists}, progress);
  CatalogTree tree;
  BuildTree(media, GroupingOrder::kGenreArtistAlbum, tree);
  SetChecksBelow(tree, kNoNode, true);
  AllOpen view(tree);
  TreePlace place;
  place.Remember(tree, view, media);
  tree.Clear();
  BuildTree(media, GroupingOrder::kGenreArtistAlbum, tree);
  if (media.size() > 0) place.Restore(tree, view, media, media[0]);
  AddCheckedFiles(tree, media, &current);
  if (media.size() > 0) DeleteEntry(media, 0);
  WriteM3u(files, L"\\new.m3u", current);
  // What lost its tag stands elsewhere.
  std::sort(current.begin(), current.end(), [](const MediaEntry& a, const MediaEntry& b) {
    return CompareWide(a.path.c_str(), b.path.c_str()) < 0;
  });
  return Paths(current);
}

std::string EditTag(MemoryFiles& files) {
  MediaEntry entry;
  if (!entry.path.Assign(L"\\m\\one.mp3") || !ReadId3v1(files, &entry)) return "";
  TagEdit edit;
  edit.Load(files, entry);
  TagTexts texts;
  edit.Show(&texts);
  CopyWide(texts.title, 31, L"new");
  edit.Build(texts, 9);
  const std::string old = Bytes(files, "\\m\\one.mp3");
  const bool written = edit.Write(files, L"\\m\\one.mp3");
  const std::string now = Bytes(files, "\\m\\one.mp3");
  // A tag that could not be read is left, and the new one put behind it.
  EXPECT_EQ(now.size(), old.size() + (written && !edit.present() ? kId3v1Bytes : 0));
  EXPECT_TRUE(written || now == old);
  return written ? now.substr(now.size() - kId3v1Bytes, 6) : "";
}

// Where a read fails there is a gap, and the seek may end elsewhere; but it ends.
std::string Decode(MemoryFiles& files) {
  DecoderHeap::AttachModule();
  OpenVorbis stream = OpenVorbisPath(files, L"\\m\\chained.ogg");
  char chunk[8192];
  uint32_t count;
  size_t bytes = 0;
  for (const int64_t from : {0, 16000}) {
    if (!stream || (from > 0 && !SeekVorbis(stream.get(), from))) break;
    while (ReadVorbis(stream.get(), chunk, sizeof(chunk), &count) == kReadData) bytes += count;
  }
  stream.Close();
  DecoderHeap::DetachModule();
  return std::to_string(bytes);
}

enum Left { kNothing, kLines, kAnything };

const struct {
  const char* name;
  std::function<std::string(MemoryFiles&)> act;
  Left left;      // of the whole, when a call fails
  long each = 1;  // so many calls are passed over where there are hundreds alike
} kOperations[] = {
    {"skin in a folder", [](MemoryFiles& files) { return Skin(files, false); }, kNothing},
    {"skin in an archive", [](MemoryFiles& files) { return Skin(files, true); }, kNothing},
    {"presets",
     [](MemoryFiles& files) {
       Always prompts;
       PresetsFeature presets(files, prompts);
       const uint8_t setting[] = {0, 1, 2, 14, 27, 9, 6, 7, 8, 9, 10};
       uint8_t read[12] = {};
       const int32_t saved = presets.SavePreset(setting, L"\\V", nullptr);
       EXPECT_EQ(Bytes(files, "\\V\\presets\\Rock.eqf").size(), saved ? 31u : 3u);
       const bool found = presets.ListPresets(L"\\V") == 1 && presets.FindPreset(L"rock") == 0 &&
                          presets.ReadPreset(0, read, L"\\V");
       EXPECT_TRUE(!found || memcmp(read, setting, 11) == 0);
       presets.ClearPresets();
       return std::string(saved && found ? "saved and read" : "");
     },
     kNothing},
    {"information on a song",
     [](MemoryFiles& files) { return Information(files, L"\\m\\sample.ogg"); }, kNothing, 29},
    {"information on a chain",
     [](MemoryFiles& files) { return Information(files, L"\\m\\chained.ogg"); }, kNothing, 29},
    {"the catalog", Collect, kLines},
    {"a tag", EditTag, kNothing},
    {"decoding", Decode, kAnything, 29},
};

bool IsLeft(Left left, const std::string& part, const std::string& whole) {
  return left == kAnything || (left == kLines ? test::IsPartInOrder(part, whole) : part.empty());
}

TEST(CoreFaults, LeaveTheWholeOrWhatIsLeftOfIt) {
  MemoryFiles files;
  for (const auto& operation : kOperations) {
    const long step = test::FaultStep(operation.each);
    Fill(files);
    const std::string whole = operation.act(files);
    ASSERT_NE(whole, "") << operation.name;
    for (const int way : {0, 1, 2, 3}) {
      const bool from_then_on = way % 2 != 0, memory = way < 2;
      SCOPED_TRACE(std::string(operation.name) + (memory ? ", memory" : ", files") +
                   (from_then_on ? ", from then on" : ", once"));
      test::Sweep([&](long n) {
        Fill(files);
        std::optional<HeapFaults> faults;
        if (memory) faults.emplace(n * step, static_cast<HeapFaults::Mode>(from_then_on));
        if (!memory) files.FailAfter(n * step, from_then_on);
        const std::string got = operation.act(files);
        const bool failed = memory ? faults->triggered() : files.fault_triggered();
        faults.reset();
        files.FailAfter(-1);
        EXPECT_EQ(files.open_now, 0);
        EXPECT_TRUE(got == whole || (failed && IsLeft(operation.left, got, whole)))
            << got << " of " << whole;
        return failed && !testing::Test::HasFailure();
      });
      Fill(files);
      EXPECT_EQ(operation.act(files), whole);
    }
  }
}

}  // namespace
}  // namespace kelvo
