#include <string.h>

#include "base/memory/heap.h"
#include "base/text/wide.h"
#include "skins/skin_feature.h"
#include "skins/zip/zip_stream.h"

namespace kelvo {
namespace {

// Bounds the walk through a directory that claims to be endless; plain zip cannot count further.
constexpr int kMostMembers = 65535;

class OpenArchive {
 public:
  explicit OpenArchive(unzFile zip) noexcept : zip_(zip) {}
  OpenArchive(const OpenArchive&) = delete;
  OpenArchive& operator=(const OpenArchive&) = delete;
  ~OpenArchive() {
    if (zip_) unzClose(zip_);
  }
  unzFile get() const noexcept { return zip_; }

 private:
  unzFile zip_;
};

enum class Rank { kExact, kNoCase, kInFolder, kNone };

// `member` is a member's whole name, as the archive has it.
Rank RankOf(const char* member, const char* name) noexcept {
  if (strcmp(member, name) == 0) return Rank::kExact;
  if (EqualAsciiNoCase(member, name)) return Rank::kNoCase;
  const char* separator = member;
  while (*separator != 0 && *separator != '/' && *separator != '\\') ++separator;
  if (*separator != 0 && EqualAsciiNoCase(separator + 1, name)) return Rank::kInFolder;
  return Rank::kNone;
}

// Makes the best match the archive's current member.
[[nodiscard]] bool Locate(unzFile zip, const char* name) noexcept {
  unz_global_info64 global;
  if (unzGetGlobalInfo64(zip, &global) != UNZ_OK || global.number_entry == 0) return false;
  Rank best = Rank::kNone;
  unz64_file_pos best_position = {};
  int result = unzGoToFirstFile(zip);
  for (int i = 0; i < kMostMembers && result == UNZ_OK && best != Rank::kExact; ++i) {
    // Longer names are no paths of the device; they are not terminated and not compared.
    char member[kTextCapacity];
    unz_file_info64 info;
    if (unzGetCurrentFileInfo64(zip, &info, member, sizeof(member), nullptr, 0, nullptr, 0) !=
        UNZ_OK) {
      break;
    }
    const Rank rank = info.size_filename < sizeof(member) ? RankOf(member, name) : Rank::kNone;
    if (rank < best && unzGetFilePos64(zip, &best_position) == UNZ_OK) best = rank;
    result = unzGoToNextFile(zip);
  }
  return best != Rank::kNone && unzGoToFilePos64(zip, &best_position) == UNZ_OK;
}

// What the directory says of the current member, and whether that is something that can be read.
[[nodiscard]] SkinFault Describe(unzFile zip, unz_file_info64* info) noexcept {
  constexpr uLong kEncrypted = 1;
  if (unzGetCurrentFileInfo64(zip, info, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK) {
    return SkinFault::kDamaged;
  }
  if ((info->flag & kEncrypted) != 0) return SkinFault::kEncrypted;
  if (info->uncompressed_size > kMostSkinBytes) return SkinFault::kTooLarge;
  if (info->compression_method == Z_DEFLATED) return SkinFault::kNone;
  if (info->compression_method != 0) return SkinFault::kMethodUnknown;
  return info->compressed_size == info->uncompressed_size ? SkinFault::kNone : SkinFault::kDamaged;
}

void* AllocateForInflate(void*, unsigned count, unsigned bytes_each) {
  return HeapAllocateZeroed(count, bytes_each);
}

void FreeForInflate(void*, void* block) {
  HeapFree(block);
}

// Unpacks a member while it is read. Too large for the stack.
class Inflater {
 public:
  Inflater() noexcept {
    stream_.zalloc = AllocateForInflate;
    stream_.zfree = FreeForInflate;
  }
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;
  ~Inflater() { inflateEnd(&stream_); }

  // True when all that is packed makes exactly these bytes: minizip itself would stop at the size
  // that the directory claims and never see what lies behind.
  [[nodiscard]] bool Fill(unzFile zip, void* dst, uint32_t bytes) noexcept {
    if (inflateInit2(&stream_, -MAX_WBITS) != Z_OK) return false;
    stream_.next_out = static_cast<Bytef*>(dst);
    stream_.avail_out = bytes;
    int result = Z_OK;
    while (result == Z_OK && (stream_.avail_in > 0 || ReadPacked(zip))) {
      result = inflate(&stream_, Z_NO_FLUSH);
    }
    return result == Z_STREAM_END && stream_.avail_out == 0 && stream_.avail_in == 0 &&
           !ReadPacked(zip);
  }

 private:
  [[nodiscard]] bool ReadPacked(unzFile zip) noexcept {
    const int got = unzReadCurrentFile(zip, packed_, sizeof(packed_));
    stream_.next_in = packed_;
    stream_.avail_in = got > 0 ? static_cast<uInt>(got) : 0;
    return got > 0;
  }

  z_stream stream_ = {};
  Bytef packed_[4096];
};

// Fills the block with the current member's bytes.
[[nodiscard]] bool ReadMember(unzFile zip, bool deflated, SkinBlock* block) noexcept {
  if (deflated) {
    const HeapPtr<Inflater> inflater(HeapNew<Inflater>());
    return inflater && inflater->Fill(zip, block->data(), block->size());
  }
  return unzReadCurrentFile(zip, block->data(), block->size()) == static_cast<int>(block->size());
}

[[nodiscard]] SkinFault ReadCurrent(unzFile zip, SkinBlock* block) noexcept {
  unz_file_info64 info;
  const SkinFault fault = Describe(zip, &info);
  if (fault != SkinFault::kNone) return fault;
  constexpr int kAsItIsPacked = 1;
  if (unzOpenCurrentFile2(zip, nullptr, nullptr, kAsItIsPacked) != UNZ_OK) {
    return SkinFault::kDamaged;
  }
  if (!block->Allocate(static_cast<uint32_t>(info.uncompressed_size))) return SkinFault::kNoMemory;
  const bool whole = ReadMember(zip, info.compression_method == Z_DEFLATED, block) &&
                     crc32(0, static_cast<const Bytef*>(block->data()), block->size()) == info.crc;
  return whole ? SkinFault::kNone : SkinFault::kDamaged;
}

void CopyName(unzFile zip, SkinMember* member) noexcept {
  unz_file_info64 info;
  if (unzGetCurrentFileInfo64(zip, &info, member->name, sizeof(member->name), nullptr, 0, nullptr,
                              0) != UNZ_OK) {
    member->name[0] = 0;
  }
}

}  // namespace

SkinBlock ReadFromSkinArchive(ByteSource& archive, const char* name, SkinMember* member) noexcept {
  SkinFault ignored;
  SkinFault& fault = member ? member->fault : ignored;
  if (member) member->name[0] = 0;
  // Too large for the stack.
  const HeapPtr<ZipStream> stream(HeapNew<ZipStream>(archive));
  fault = SkinFault::kNoMemory;
  if (!stream) return {};
  const OpenArchive zip(stream->Open());
  fault = SkinFault::kNotAnArchive;
  if (!zip.get()) return {};
  fault = SkinFault::kNoMember;
  if (!Locate(zip.get(), name)) return {};
  if (member) CopyName(zip.get(), member);
  SkinBlock block;
  fault = ReadCurrent(zip.get(), &block);
  if (fault != SkinFault::kNone) return {};
  return block;
}

}  // namespace kelvo
