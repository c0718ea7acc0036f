/* The host's access to the bytes of one media file.
 *
 * Generated from tools/contract/media_reader.txt. */
#ifndef KELVO_C_MEDIA_READER_H
#define KELVO_C_MEDIA_READER_H

#include "types.h"

#define KELVO_SEEK_START 0
#define KELVO_SEEK_CURRENT 1
#define KELVO_SEEK_END 2

/* What Seek answers when it fails. Any other answer, -1 included, counts as a success. */
#define KELVO_SEEK_FAILED 0x7FFFFFFFFFFFFFFF

/* Implemented by the host. While a file plays the decoding thread reads, and so does the
 * plug-in's SeekMs, on the thread that called it; never both at once. All other calls are made
 * on the thread that called the plug-in. Slot 0 is not called; the library never deletes the
 * object. */
typedef struct KelvoMediaReader KelvoMediaReader;
typedef struct KelvoMediaReaderTable {
  /* Slot 0. */
  void(KELVO_METHOD* Reserved0)(KELVO_SELF(KelvoMediaReader));

/* Slot 1. Moves the read position and returns the new one, or KELVO_SEEK_FAILED. */
#ifdef KELVO_CE_ARM /* for compilers that skip to an even register: see media_reader.h */
  int64_t(KELVO_METHOD* Seek)(KELVO_SELF(KelvoMediaReader), uint32_t low, uint32_t high,
                              uint32_t origin);
#else
  int64_t(KELVO_METHOD* Seek)(KELVO_SELF(KelvoMediaReader), int64_t offset, uint32_t origin);
#endif

  /* Slot 2. Reads up to `bytes` bytes and stores how many; 0 at the end. Non-zero on success. */
  int32_t(KELVO_METHOD* Read)(KELVO_SELF(KelvoMediaReader), void* destination, uint32_t bytes,
                              uint32_t* bytes_read);

  /* Slot 3. Closes the file. Called twice when a playing file is closed (once as the decoder
   * lets go of it, once by the plug-in), so repeating it must be harmless; the plug-in's Close
   * returns the last result. */
  int32_t(KELVO_METHOD* Close)(KELVO_SELF(KelvoMediaReader));

  /* Slot 4. Opens a file; path and mode are those given to the plug-in's Open. Non-zero on
   * success. */
  int32_t(KELVO_METHOD* Open)(KELVO_SELF(KelvoMediaReader), const wchar_t* path, uint32_t mode);

  /* Slot 5. Asked before a file is closed, with the two words given to the plug-in's Close; 0
   * keeps it open. */
  int32_t(KELVO_METHOD* Release)(KELVO_SELF(KelvoMediaReader), KelvoHostWord a, KelvoHostWord b);
} KelvoMediaReaderTable;
struct KelvoMediaReader {
  const KelvoMediaReaderTable* table;
};

#endif
