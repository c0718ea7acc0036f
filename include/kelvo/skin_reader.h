// Feature 5: the files of a skin, out of a folder or of a zip archive (docs/formats/skin-set.md).
//
// A file is asked for by its number. The result is a block with the file's bytes, nothing added,
// and its size; the host owns it and gives it back with the C library's free(). An empty file is a
// non-null block of size 0. Failure is null and size 0: a number outside the enumeration, no such
// file, a file or archive that cannot be read, no memory.
//
// Thread: all operations on the host's user-interface thread; the object has no state.
//
// Generated from tools/contract/skin_reader.txt.
#pragma once

#include "kelvo/types.h"

namespace kelvo {

enum SkinFile : int32_t {
  kSkinBalance = 1,
  kSkinButtons = 2,
  kSkinEqualizerEx = 3,
  kSkinEqualizer = 4,
  kSkinMain = 5,
  kSkinMonoStereo = 6,
  kSkinNumbers = 7,
  kSkinNumbersEx = 8,
  kSkinPlayPause = 9,
  kSkinPlaylist = 10,
  kSkinPlaylistText = 11,
  kSkinPositionBar = 12,
  kSkinShuffleRepeat = 13,
  kSkinText = 14,
  kSkinTitleBar = 15,
  kSkinColours = 16,
  kSkinVolume = 17,
};

constexpr int32_t kSkinFileCount = 17;

// The file's name in the folder or archive; null for numbers outside the enumeration.
inline const char* SkinFileName(int32_t number) noexcept {
  static constexpr const char* kNames[kSkinFileCount] = {
      "balance.bmp", "cbuttons.bmp", "eq_ex.bmp",    "eqmain.bmp",   "main.bmp",   "monoster.bmp",
      "numbers.bmp", "nums_ex.bmp",  "playpaus.bmp", "pledit.bmp",   "pledit.txt", "posbar.bmp",
      "shufrep.bmp", "text.bmp",     "titlebar.bmp", "viscolor.txt", "volume.bmp"};
  return number >= 1 && number <= kSkinFileCount ? kNames[number - 1] : nullptr;
}

class SkinReader {
 public:
  // Slot 0. Reads a skin file from a folder (path without backslash at its end).
  virtual void* ReadFromFolder(const wchar_t* folder, int32_t number,
                               uint32_t* size_bytes) noexcept = 0;

  // Slot 1. Reads a skin file from a zip archive. A damaged or encrypted member and one of more
  // than 16 MiB count as unreadable. Nothing is written to disk.
  virtual void* ReadFromArchive(const wchar_t* archive, int32_t number,
                                uint32_t* size_bytes) noexcept = 0;

  // Slot 2. Does nothing but give the object's own memory back when bit 0 of `flags` is set. For
  // the library's unloading; never to be called by the host on what GetFeature returned.
  virtual void Destroy(uint32_t flags) noexcept = 0;

 protected:
  ~SkinReader() = default;
};

}  // namespace kelvo
