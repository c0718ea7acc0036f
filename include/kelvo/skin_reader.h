// Feature 5: the files of a skin, out of a folder or of a zip archive (docs/formats/skin-set.md).
//
// A file is asked for by its number. The result is a block with the file's bytes, nothing added,
// and its size; the host owns it and gives it back with the C library's free(). An empty file is a
// non-null block of size 0. Failure is null and size 0: a number outside the enumeration, no such
// file, a file or archive that cannot be read, no memory.
//
// Thread: all operations on the host's user-interface thread; the object has no state.
#pragma once

#include "kelvo/types.h"

namespace kelvo {

enum SkinFile : int32_t {
  kSkinBalance = 1,         // balance.bmp
  kSkinButtons = 2,         // cbuttons.bmp
  kSkinEqualizerEx = 3,     // eq_ex.bmp
  kSkinEqualizer = 4,       // eqmain.bmp
  kSkinMain = 5,            // main.bmp
  kSkinMonoStereo = 6,      // monoster.bmp
  kSkinNumbers = 7,         // numbers.bmp
  kSkinNumbersEx = 8,       // nums_ex.bmp
  kSkinPlayPause = 9,       // playpaus.bmp
  kSkinPlaylist = 10,       // pledit.bmp
  kSkinPlaylistText = 11,   // pledit.txt
  kSkinPositionBar = 12,    // posbar.bmp
  kSkinShuffleRepeat = 13,  // shufrep.bmp
  kSkinText = 14,           // text.bmp
  kSkinTitleBar = 15,       // titlebar.bmp
  kSkinColours = 16,        // viscolor.txt
  kSkinVolume = 17,         // volume.bmp
};

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
