// What the playlist targets have in common: the input is one playlist file, the only file there is;
// every media path exists without a tag.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "base/bytes/memory_source.h"
#include "base/files/file_system.h"
#include "base/memory/array.h"
#include "base/text/wide.h"
#include "catalog/media/media_kind.h"
#include "tests/fuzz/require.h"
#include "playlist/add_path.h"
#include "playlist/m3u_writer.h"

namespace kelvo::fuzz {

class OneFile final : public FileSystem {
 public:
  OneFile(const wchar_t* path, const uint8_t* data, size_t size) : path_(path) {
    Require(bytes_.AppendRange(data, size));
  }

  OpenFile<FileReader> OpenRead(const wchar_t* path, Share) noexcept override {
    if (!EqualNoCase(path, path_)) return {};
    return OpenFile<FileReader>(HeapNew<Reader>(bytes_));
  }
  OpenFile<FileWriter> OpenWrite(const wchar_t*, Share) noexcept override { return {}; }
  OpenFile<FileWriter> Create(const wchar_t*, Share) noexcept override {
    bytes_.Clear();
    return OpenFile<FileWriter>(HeapNew<Writer>(&bytes_));
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

  const wchar_t* path_;
  Array<uint8_t> bytes_;
};

class NoInformation final : public MediaInformation {
 public:
  bool OggInformation(const wchar_t*, MediaTexts*) noexcept override { return false; }
  bool WmaInformation(const wchar_t*, MediaTexts*) noexcept override { return false; }
  bool WmaAvailable() noexcept override { return true; }
};

// Whether an M3U line can say this path: the reader gives back exactly what was written.
inline bool SurvivesM3u(const wchar_t* path) {
  if (path[0] == L'#' || !FindWide(path, L'\\')) return false;
  if (WideLength(path) > 255) return false;
  for (const wchar_t* c = path; *c; ++c) {
    // 0x1A ends a text; the others end a line or vanish before its end.
    if (*c == L'\n' || *c == L'\r' || *c == 0x1A) return false;
  }
  return true;
}

// Reads the input as a playlist, checks each entry, and writes and reads the list again.
inline int CheckPlaylist(const wchar_t* path, const uint8_t* data, size_t size) {
  OneFile files(path, data, size);
  NoInformation information;
  ChainGuard guard;
  EntryList list;
  AddPath({files, information, &guard}, path, &list);
  EntryList kept;
  for (const MediaEntry& entry : list) {
    const MediaKind kind = MediaKindOf(entry.path.c_str());
    Require(kind == MediaKind::kMpeg || kind == MediaKind::kOgg || kind == MediaKind::kWma);
    Require(entry.item == kEntryFlag);
    Require(WideLength(entry.path.c_str()) < kTextCapacity);
    if (SurvivesM3u(entry.path.c_str())) Require(kept.Add(entry.path.c_str()) != nullptr);
  }
  Require(list.size() <= size);
  Require(WriteM3u(files, path, kept));
  EntryList again;
  ChainGuard fresh;
  ReadM3u({files, information, &fresh}, path, &again);
  Require(again.size() == kept.size());
  for (size_t i = 0; i < kept.size(); ++i) {
    Require(CompareWide(again[i].path.c_str(), kept[i].path.c_str()) == 0);
  }
  return 0;
}

}  // namespace kelvo::fuzz
