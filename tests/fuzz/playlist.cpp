// The playlist targets, one a kind (KELVO_FUZZ_KIND): the input is a playlist and, separated by
// bytes 0x1D, up to three others that it may name: 1.m3u, 2.pls and 3.asx in its folder. There are
// no other playlists; every media path exists, without a tag. What is read is compared with its
// model.
#include <stddef.h>
#include <stdint.h>

#include <optional>
#include <string>

#include "base/bytes/memory_source.h"
#include "base/files/file_system.h"
#include "base/memory/array.h"
#include "base/text/ansi.h"
#include "base/text/wide.h"
#include "catalog/media/entry_list.h"
#include "playlist/playlist_files.h"
#include "tests/fuzz/require.h"
#include "tests/oracles/playlist_model.h"

namespace kelvo::fuzz {
namespace {

class FewFiles final : public FileSystem {
 public:
  FewFiles(const wchar_t* path, const uint8_t* data, size_t size)
      : names_{path, L"C:\\Music\\1.m3u", L"C:\\Music\\2.pls", L"C:\\Music\\3.asx"} {
    size_t file = 0;
    for (size_t i = 0; i < size; ++i) {
      if (data[i] == 0x1D && file < 3) {
        ++file;
      } else {
        Require(bytes_[file].Append(data[i]));
      }
    }
  }

  // Null when there is no such playlist.
  const Array<uint8_t>* Find(const wchar_t* path) const {
    for (size_t i = 0; i < 4; ++i) {
      if (EqualNoCase(path, names_[i])) return &bytes_[i];
    }
    return nullptr;
  }

  OpenFile<FileReader> OpenRead(const wchar_t* path, Share) noexcept override {
    const Array<uint8_t>* bytes = Find(path);
    if (!bytes) return {};
    return OpenFile<FileReader>(HeapNew<Reader>(*bytes));
  }
  OpenFile<FileWriter> OpenWrite(const wchar_t*, Share) noexcept override { return {}; }
  OpenFile<FileWriter> Create(const wchar_t*, Share) noexcept override {
    bytes_[0].Clear();
    return OpenFile<FileWriter>(HeapNew<Writer>(&bytes_[0]));
  }
  bool GetAttributes(const wchar_t* path, uint32_t* attributes) noexcept override {
    Require(WideLength(path) < kTextCapacity);
    *attributes = kAttributeNormal;
    return true;
  }
  bool SetAttributes(const wchar_t*, uint32_t) noexcept override { return false; }
  bool Delete(const wchar_t*) noexcept override { return false; }
  bool Move(const wchar_t*, const wchar_t*) noexcept override { return false; }
  bool Replace(const wchar_t*, const wchar_t*) noexcept override { return true; }
  bool List(const wchar_t*, FolderVisitor&) noexcept override { return false; }

 private:
  class Reader final : public FileReader {
   public:
    explicit Reader(const Array<uint8_t>& bytes) noexcept : source_(bytes.data(), bytes.size()) {}
    uint64_t SizeBytes() noexcept override { return source_.SizeBytes(); }
    ReadResult ReadSome(uint64_t offset, void* dst, size_t bytes, size_t* got) noexcept override {
      return source_.ReadSome(offset, dst, bytes, got);
    }
    void Close() noexcept override { HeapDelete(this); }

   private:
    MemorySource source_;
  };
  class Writer final : public FileWriter {
   public:
    explicit Writer(Array<uint8_t>* bytes) noexcept : bytes_(bytes) {}
    bool Write(const void* data, size_t bytes) noexcept override {
      return bytes_->AppendRange(static_cast<const uint8_t*>(data), bytes);
    }
    bool Flush() noexcept override { return true; }
    bool SeekFromEnd(uint32_t) noexcept override { return false; }
    void Close() noexcept override { HeapDelete(this); }

   private:
    Array<uint8_t>* bytes_;
  };

  const wchar_t* names_[4];
  Array<uint8_t> bytes_[4];
};

// Ends soon: a few lists that name each other crosswise are worth no longer look.
class FewLists final : public NestingGuard {
 public:
  static constexpr size_t kMost = 29;
  bool Enter(const wchar_t* path) noexcept override {
    return ++entered_ <= kMost && chain_.Enter(path);
  }
  void Leave() noexcept override { chain_.Leave(); }
  bool CountLine() noexcept override { return true; }
  bool CountMedia() noexcept override { return true; }

 private:
  ChainGuard chain_;
  size_t entered_ = 0;
};

class NoInformation final : public MediaInformation {
 public:
  bool OggInformation(const wchar_t*, MediaTexts*) noexcept override { return false; }
  bool WmaInformation(const wchar_t*, MediaTexts*) noexcept override { return false; }
  bool WmaAvailable() noexcept override { return true; }
};

// Whether an M3U line can say this path: the reader gives back exactly what was written.
bool SurvivesM3u(const wchar_t* path) {
  if (path[0] == L'#' || !FindWide(path, L'\\')) return false;
  if (WideLength(path) > 255) return false;
  for (const wchar_t* c = path; *c; ++c) {
    // 0x1A ends a text; the others end a line or vanish before its end.
    if (*c == L'\n' || *c == L'\r' || *c == 0x1A) return false;
  }
  return true;
}

// Reads the input as a playlist, checks each entry, and writes and reads the list again.
int CheckPlaylist(const wchar_t* path, const uint8_t* data, size_t size) {
  FewFiles files(path, data, size);
  NoInformation information;
  FewLists guard;
  EntryList list;
  AddPath({files, information, &guard}, path, &list);
  oracle::PlaylistModel model;
  model.most_lists = FewLists::kMost;
  model.find = [&](const std::string& name) -> std::optional<std::string> {
    wchar_t wide[kTextCapacity];
    AnsiToWide(name.data(), name.size(), wide, kTextCapacity);
    const Array<uint8_t>* const bytes = files.Find(wide);
    if (!bytes) return "";
    return std::string(reinterpret_cast<const char*>(bytes->data()), bytes->size());
  };
  char bytes[kTextCapacity];
  model.AddPath({bytes, WideToAnsi(path, kTextCapacity, bytes, kTextCapacity, nullptr)});
  Require(list.size() == model.list.size());
  for (size_t i = 0; i < list.size(); ++i) {
    wchar_t want[kTextCapacity];
    AnsiToWide(model.list[i].path.data(), model.list[i].path.size(), want, kTextCapacity);
    Require(CompareWide(list[i].path.c_str(), want) == 0);
  }
  EntryList kept;
  for (const MediaEntry& entry : list) {
    const MediaKind kind = MediaKindOf(entry.path.c_str());
    Require(kind == MediaKind::kMpeg || kind == MediaKind::kOgg || kind == MediaKind::kWma);
    Require(entry.item == kEntryFlag);
    Require(WideLength(entry.path.c_str()) < kTextCapacity);
    if (SurvivesM3u(entry.path.c_str())) Require(kept.Add(entry.path.c_str()) != nullptr);
  }
  Require(WriteM3u(files, path, kept));
  EntryList again;
  ReadM3u({files, information, nullptr}, path, &again);
  Require(again.size() == kept.size());
  for (size_t i = 0; i < kept.size(); ++i) {
    Require(CompareWide(again[i].path.c_str(), kept[i].path.c_str()) == 0);
  }
  return 0;
}

}  // namespace
}  // namespace kelvo::fuzz

#define KELVO_LIST_OF(kind) L"C:\\Music\\list." #kind
#define KELVO_LIST(kind) KELVO_LIST_OF(kind)

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  return kelvo::fuzz::CheckPlaylist(KELVO_LIST(KELVO_FUZZ_KIND), data, size);
}
