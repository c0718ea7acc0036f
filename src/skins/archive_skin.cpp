#include "skins/archive_skin.h"

#include <string.h>

#include "base/memory/heap.h"
#include "base/text/wide.h"
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

// The current member's size, when it is one that can be read.
[[nodiscard]] bool GetReadableSize(unzFile zip, uint32_t* size) noexcept {
  constexpr uLong kEncrypted = 1;
  unz_file_info64 info;
  if (unzGetCurrentFileInfo64(zip, &info, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK) {
    return false;
  }
  if (info.compression_method != 0 && info.compression_method != Z_DEFLATED) return false;
  if ((info.flag & kEncrypted) != 0 || info.uncompressed_size > kMostSkinBytes) return false;
  *size = static_cast<uint32_t>(info.uncompressed_size);
  return true;
}

}  // namespace

SkinBlock ReadFromSkinArchive(ByteSource& archive, const char* name) noexcept {
  // Too large for the stack.
  const HeapPtr<ZipStream> stream(HeapNew<ZipStream>(archive));
  if (!stream) return {};
  const OpenArchive zip(stream->Open());
  uint32_t size;
  if (!zip.get() || !Locate(zip.get(), name) || !GetReadableSize(zip.get(), &size)) return {};
  if (unzOpenCurrentFile(zip.get()) != UNZ_OK) return {};

  SkinBlock block;
  const bool complete = block.Take(size) &&
                        unzReadCurrentFile(zip.get(), block.data(), size) == static_cast<int>(size);
  // Closing compares the checksum.
  if (unzCloseCurrentFile(zip.get()) != UNZ_OK || !complete) return {};
  return block;
}

}  // namespace kelvo
