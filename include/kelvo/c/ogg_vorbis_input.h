/* Feature 3: the input plug-in for Ogg Vorbis files.
 *
 * Generated from tools/contract/ogg_vorbis_input.txt. */
#ifndef KELVO_C_OGG_VORBIS_INPUT_H
#define KELVO_C_OGG_VORBIS_INPUT_H

#include "input_plugin.h"

/* The desktop's CRITICAL_SECTION, which the library enters, and how often it is entered. */
typedef struct KelvoLockFields {
  void* debug;
  int32_t lock_count;
  int32_t recursions;
  void* owner;
  void* semaphore;
  uintptr_t spins;
  int32_t depth;
} KelvoLockFields;

typedef struct KelvoOggVorbisInput KelvoOggVorbisInput;
typedef struct KelvoOggVorbisInputTable {
  void(KELVO_METHOD* Reserved0)(KELVO_SELF(KelvoOggVorbisInput));
  int32_t(KELVO_METHOD* GetDisplayTitle)(KELVO_SELF(KelvoOggVorbisInput), wchar_t* title);
  void(KELVO_METHOD* GetMediaInfo)(KELVO_SELF(KelvoOggVorbisInput), KelvoMediaInfo* info);
  int32_t(KELVO_METHOD* GetLengthMs)(KELVO_SELF(KelvoOggVorbisInput));
  int32_t(KELVO_METHOD* GetPositionMs)(KELVO_SELF(KelvoOggVorbisInput), KelvoHostWord a,
                                       KelvoHostWord b);
  void(KELVO_METHOD* SetState)(KELVO_SELF(KelvoOggVorbisInput), uint32_t state);
  uint32_t(KELVO_METHOD* GetState)(KELVO_SELF(KelvoOggVorbisInput));
  uint32_t(KELVO_METHOD* Reserved7)(KELVO_SELF(KelvoOggVorbisInput));
  uint32_t(KELVO_METHOD* Reserved8)(KELVO_SELF(KelvoOggVorbisInput));
  int32_t(KELVO_METHOD* SeekMs)(KELVO_SELF(KelvoOggVorbisInput), int32_t milliseconds);
  int32_t(KELVO_METHOD* Stop)(KELVO_SELF(KelvoOggVorbisInput));
  int32_t(KELVO_METHOD* TogglePause)(KELVO_SELF(KelvoOggVorbisInput));
  int32_t(KELVO_METHOD* Play)(KELVO_SELF(KelvoOggVorbisInput));
  int32_t(KELVO_METHOD* Close)(KELVO_SELF(KelvoOggVorbisInput), KelvoHostWord a, KelvoHostWord b);
  int32_t(KELVO_METHOD* Open)(KELVO_SELF(KelvoOggVorbisInput), const wchar_t* path, uint32_t mode);
  void(KELVO_METHOD* Destroy)(KELVO_SELF(KelvoOggVorbisInput), uint32_t flags);

  /* Slot 16. Asks about any file by its path, independent of the open one; the library opens and
   * closes the file itself. Non-zero when the file could be opened. Every output may be null;
   * the texts are buffers of KELVO_MAX_TEXT characters. `info` is to be zero-filled; its stereo
   * flag is set for every file of more than one channel (GetMediaInfo: of exactly two). */
  int32_t(KELVO_METHOD* GetFileInfo)(KELVO_SELF(KelvoOggVorbisInput), const wchar_t* path,
                                     wchar_t* display_title, wchar_t* album, KelvoMediaInfo* info,
                                     uint32_t* length_ms, uint32_t* ignored, wchar_t* artist,
                                     wchar_t* title);

  /* Slot 17. The window that receives KELVO_MESSAGE_END_OF_PLAYBACK (messages.h); null for none. */
  void(KELVO_METHOD* SetNotifyWindow)(KELVO_SELF(KelvoOggVorbisInput), KelvoWindowHandle window);
} KelvoOggVorbisInputTable;
struct KelvoOggVorbisInput {
  const KelvoOggVorbisInputTable* table;
  KelvoHostWord host_context; /* the library never reads it */
  KelvoAudioOutput* output;   /* the host's, set before Play; borrowed until Stop and Close */
  KelvoMediaReader* reader;   /* the host's, set before Open; borrowed until Stop and Close */
  uint32_t state;             /* a PlaybackState */
  KelvoWindowHandle notify_window;
  void* stream; /* null without a file; its first word is the reader */
  uint32_t total_frames;
  uint32_t reserved[2]; /* cleared by Open */
  uint32_t channels;
  uint32_t sample_rate;       /* Hz */
  uint32_t bit_rate;          /* kbit/s */
  uint32_t more_reserved[2];  /* cleared by Open */
  void* thread;               /* a handle: all bits set at first, null after Stop */
  int32_t thread_priority;    /* of the next thread: 3 is normal, 0 the most urgent, 7 the least */
  void* ready_event;          /* signalled when the thread has started the output, or has ended */
  KelvoLockFields lock;       /* of what the two threads share */
  wchar_t path[260];          /* of the open file */
  KelvoOutputBuffer* current; /* the buffer being filled */
  uint32_t buffer_bytes;
  uint32_t free_bytes; /* in the current buffer */
  uint32_t seek_pending;
  uint32_t run_output; /* the user has not paused it */
  uint32_t stop_request;
  uint32_t seek_base; /* frame reached by the last seek */
};

#endif
