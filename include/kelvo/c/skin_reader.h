/* Feature 5: the files of a skin, out of a folder or of a zip archive
 * (docs/formats/skin-set.md).
 *
 * A file is asked for by its number. The result is a block with the file's bytes, nothing
 * added, and its size; the host owns it and gives it back with the C library's free(). An
 * empty file is a non-null block of size 0. Failure is null and size 0: a number outside the
 * enumeration, no such file, a file or archive that cannot be read, no memory.
 *
 * Thread: all operations on the host's user-interface thread; the object has no state.
 *
 * Generated from tools/contract/skin_reader.txt. */
#ifndef KELVO_C_SKIN_READER_H
#define KELVO_C_SKIN_READER_H

#include "types.h"

#define KELVO_SKIN_BALANCE 1
#define KELVO_SKIN_BUTTONS 2
#define KELVO_SKIN_EQUALIZER_EX 3
#define KELVO_SKIN_EQUALIZER 4
#define KELVO_SKIN_MAIN 5
#define KELVO_SKIN_MONO_STEREO 6
#define KELVO_SKIN_NUMBERS 7
#define KELVO_SKIN_NUMBERS_EX 8
#define KELVO_SKIN_PLAY_PAUSE 9
#define KELVO_SKIN_PLAYLIST 10
#define KELVO_SKIN_PLAYLIST_TEXT 11
#define KELVO_SKIN_POSITION_BAR 12
#define KELVO_SKIN_SHUFFLE_REPEAT 13
#define KELVO_SKIN_TEXT 14
#define KELVO_SKIN_TITLE_BAR 15
#define KELVO_SKIN_COLOURS 16
#define KELVO_SKIN_VOLUME 17

#define KELVO_SKIN_FILE_COUNT 17

/* The file's name in the folder or archive; null for numbers outside the enumeration. */
#define KELVO_SKIN_FILE_NAMES                                                                   \
  {                                                                                             \
    "balance.bmp", "cbuttons.bmp", "eq_ex.bmp", "eqmain.bmp", "main.bmp", "monoster.bmp",       \
        "numbers.bmp", "nums_ex.bmp", "playpaus.bmp", "pledit.bmp", "pledit.txt", "posbar.bmp", \
        "shufrep.bmp", "text.bmp", "titlebar.bmp", "viscolor.txt", "volume.bmp"                 \
  }

typedef struct KelvoSkinReader KelvoSkinReader;
typedef struct KelvoSkinReaderTable {
  /* Slot 0. Reads a skin file from a folder (path without backslash at its end). */
  void*(KELVO_METHOD* ReadFromFolder)(KELVO_SELF(KelvoSkinReader), const wchar_t* folder,
                                      int32_t number, uint32_t* size_bytes);

  /* Slot 1. Reads a skin file from a zip archive. A damaged or encrypted member and one of more
   * than 16 MiB count as unreadable. Nothing is written to disk. */
  void*(KELVO_METHOD* ReadFromArchive)(KELVO_SELF(KelvoSkinReader), const wchar_t* archive,
                                       int32_t number, uint32_t* size_bytes);

  /* Slot 2. Does nothing but give the object's own memory back when bit 0 of `flags` is set. For
   * the library's unloading; never to be called by the host on what GetFeature returned. */
  void(KELVO_METHOD* Destroy)(KELVO_SELF(KelvoSkinReader), uint32_t flags);
} KelvoSkinReaderTable;
struct KelvoSkinReader {
  const KelvoSkinReaderTable* table;
};

#endif
