/* The contract between the host and an input plug-in, which turns one media file into PCM.
 *
 * Order of calls: SetReader, Open; SetOutput, Play; then TogglePause, SeekMs, the getters in
 * any order; Stop; Close (or a new Open after Close). The object is built once and reused for
 * file after file. Stop comes before Close. Every operation is harmless without a file: it
 * returns 0 or does nothing. Failure is a zero result, unless an operation says otherwise; no
 * text crosses this interface.
 *
 * Thread: the host calls all operations from one thread, its own. A plug-in may have a
 * decoding thread; that one calls KelvoAudioOutput, KelvoMediaReader, SetState and GetState.
 *
 * The plug-in calls its own SetState, GetState and TogglePause through the object's table: a
 * host that puts a table of its own there sees every change of the state.
 *
 * Generated from tools/contract/input_plugin.txt. */
#ifndef KELVO_C_INPUT_PLUGIN_H
#define KELVO_C_INPUT_PLUGIN_H

#include "audio_output.h"
#include "media_info.h"
#include "media_reader.h"
#include "types.h"

#define KELVO_STOPPED 1 /* also: opened but not playing */
#define KELVO_PLAYING 2
#define KELVO_PAUSED 3

typedef struct KelvoInputPlugin KelvoInputPlugin;
typedef struct KelvoInputPluginTable {
  /* Slot 0. */
  void(KELVO_METHOD* Reserved0)(KELVO_SELF(KelvoInputPlugin));

  /* Slot 1. Writes the open file's display title ("artist - title", or the file's name) into a
   * buffer of KELVO_MAX_TEXT characters. Non-zero when a title was written. */
  int32_t(KELVO_METHOD* GetDisplayTitle)(KELVO_SELF(KelvoInputPlugin), wchar_t* title);

  /* Slot 2. Fills the record from the open file. */
  void(KELVO_METHOD* GetMediaInfo)(KELVO_SELF(KelvoInputPlugin), KelvoMediaInfo* info);

  /* Slot 3. Length of the open file in milliseconds. */
  int32_t(KELVO_METHOD* GetLengthMs)(KELVO_SELF(KelvoInputPlugin));

  /* Slot 4. Position in milliseconds; the words are passed on to KelvoAudioOutput.PlayedSamples. */
  int32_t(KELVO_METHOD* GetPositionMs)(KELVO_SELF(KelvoInputPlugin), KelvoHostWord a,
                                       KelvoHostWord b);

  /* Slot 5. Stores a PlaybackState. The plug-in makes every change of its own through this slot,
   * on its decoding thread too, and with a lock of its own held: no operation but GetState may
   * be awaited from within. */
  void(KELVO_METHOD* SetState)(KELVO_SELF(KelvoInputPlugin), uint32_t state);

  /* Slot 6. The PlaybackState. */
  uint32_t(KELVO_METHOD* GetState)(KELVO_SELF(KelvoInputPlugin));

  /* Slot 7. */
  uint32_t(KELVO_METHOD* Reserved7)(KELVO_SELF(KelvoInputPlugin));

  /* Slot 8. */
  uint32_t(KELVO_METHOD* Reserved8)(KELVO_SELF(KelvoInputPlugin));

  /* Slot 9. Goes to a position in milliseconds. Non-zero on success; a position at or behind the
   * end is refused, a negative one is the start. (Ogg Vorbis: a seek while the last buffers
   * drain ends the thread with its message; the state stays as it was, playing or paused, and
   * the output open: after Stop and SetState(KELVO_STOPPED) the next Play opens it anew.) */
  int32_t(KELVO_METHOD* SeekMs)(KELVO_SELF(KelvoInputPlugin), int32_t milliseconds);

  /* Slot 10. Ends playback. A plain Play afterwards goes on where the file was (Ogg Vorbis:
   * counting the position from 0) or starts at the beginning (Windows Media); a new Open always
   * starts there. */
  int32_t(KELVO_METHOD* Stop)(KELVO_SELF(KelvoInputPlugin));

  /* Slot 11. Pauses when playing, resumes when paused. (Result: some plug-ins only.) */
  int32_t(KELVO_METHOD* TogglePause)(KELVO_SELF(KelvoInputPlugin));

  /* Slot 12. Starts playback, or resumes it when paused (feature 6: see wma_input.h). Non-zero
   * when the attempt was made; the state tells whether it plays. */
  int32_t(KELVO_METHOD* Play)(KELVO_SELF(KelvoInputPlugin));

  /* Slot 13. Closes the file; the words are passed on to KelvoMediaReader.Release. */
  int32_t(KELVO_METHOD* Close)(KELVO_SELF(KelvoInputPlugin), KelvoHostWord a, KelvoHostWord b);

  /* Slot 14. Opens a file through the reader, which receives path and mode. Non-zero on success.
   * A path of KELVO_MAX_TEXT or more characters is refused. */
  int32_t(KELVO_METHOD* Open)(KELVO_SELF(KelvoInputPlugin), const wchar_t* path, uint32_t mode);

  /* Slot 15. Ends playback, releases the file and the reader, and gives the object's memory back
   * when bit 0 of `flags` is set. Otherwise the object stays with the table of the base class,
   * in which every slot does what is written here, and with the host's context, output and
   * reader. For a host that wants a feature's object gone before the library is unloaded; bit 0
   * is never for the objects of GetFeature. */
  void(KELVO_METHOD* Destroy)(KELVO_SELF(KelvoInputPlugin), uint32_t flags);
} KelvoInputPluginTable;
struct KelvoInputPlugin {
  const KelvoInputPluginTable* table;
  KelvoHostWord host_context; /* the library never reads it */
  KelvoAudioOutput* output;   /* the host's, set before Play; borrowed until Stop and Close */
  KelvoMediaReader* reader;   /* the host's, set before Open; borrowed until Stop and Close */
  uint32_t state;             /* a PlaybackState */
};

#endif
