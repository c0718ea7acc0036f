/* Feature 6: the input plug-in for Windows Media Audio files. It has no decoder: the
 * platform's player control opens and plays the file, on threads and through an output of its
 * own, so the host's KelvoAudioOutput and KelvoMediaReader are not used. What the control
 * writes to the sound device runs through feature 9 first. GetFeature gives the object only
 * where the control could be made.
 *
 * What differs from input_plugin.h:
 *   GetDisplayTitle, GetMediaInfo   read the file anew at each call
 *   GetPositionMs                   ignores its words
 *   SetState                        is stored but does not show in GetState
 *   Stop, Close                     both only stop; the control's own result (0 is success)
 *   SeekMs                          the control decides what it accepts; the position is also
 *                                   where a paused file will resume
 *   Play                            when paused it starts without a seek: only TogglePause resumes
 *                                   at the place
 *   TogglePause                     pausing stops the control and remembers the position; the
 *                                   control's own result (0 is success) when it paused, Play's when
 *                                   it resumed, the state when there was nothing to pause
 *   Open                            ignores the mode; a name that the system's 8-bit code page
 *                                   lacks is refused, with a message box when there is an owner
 *                                   window
 * The state stays KELVO_PLAYING when the file ends: the host calls Stop when it gets the
 * message.
 *
 * Thread: all operations on the thread that loaded the library. Unloading while a file plays,
 * or on another thread, is safe, but may take some seconds; on another thread a bare window is
 * left to the loading one until that looks at its messages, and its apartment stays.
 *
 * Generated from tools/contract/wma_input.txt. */
#ifndef KELVO_C_WMA_INPUT_H
#define KELVO_C_WMA_INPUT_H

#include "input_plugin.h"

#define KELVO_VISUALISATION_SAMPLES 512

typedef struct KelvoWmaInput KelvoWmaInput;
typedef struct KelvoWmaInputTable {
  void(KELVO_METHOD* Reserved0)(KELVO_SELF(KelvoWmaInput));
  int32_t(KELVO_METHOD* GetDisplayTitle)(KELVO_SELF(KelvoWmaInput), wchar_t* title);
  void(KELVO_METHOD* GetMediaInfo)(KELVO_SELF(KelvoWmaInput), KelvoMediaInfo* info);
  int32_t(KELVO_METHOD* GetLengthMs)(KELVO_SELF(KelvoWmaInput));
  int32_t(KELVO_METHOD* GetPositionMs)(KELVO_SELF(KelvoWmaInput), KelvoHostWord a, KelvoHostWord b);
  void(KELVO_METHOD* SetState)(KELVO_SELF(KelvoWmaInput), uint32_t state);
  uint32_t(KELVO_METHOD* GetState)(KELVO_SELF(KelvoWmaInput));
  uint32_t(KELVO_METHOD* Reserved7)(KELVO_SELF(KelvoWmaInput));
  uint32_t(KELVO_METHOD* Reserved8)(KELVO_SELF(KelvoWmaInput));
  int32_t(KELVO_METHOD* SeekMs)(KELVO_SELF(KelvoWmaInput), int32_t milliseconds);
  int32_t(KELVO_METHOD* Stop)(KELVO_SELF(KelvoWmaInput));
  int32_t(KELVO_METHOD* TogglePause)(KELVO_SELF(KelvoWmaInput));
  int32_t(KELVO_METHOD* Play)(KELVO_SELF(KelvoWmaInput));
  int32_t(KELVO_METHOD* Close)(KELVO_SELF(KelvoWmaInput), KelvoHostWord a, KelvoHostWord b);
  int32_t(KELVO_METHOD* Open)(KELVO_SELF(KelvoWmaInput), const wchar_t* path, uint32_t mode);
  void(KELVO_METHOD* Destroy)(KELVO_SELF(KelvoWmaInput), uint32_t flags);

  /* Slot 16. The next KELVO_VISUALISATION_SAMPLES samples (16 bits, first channel, after the
   * effects) of the block that was handed to the sound device last, padded with zeros. 1 when
   * they were written; 0, and nothing is written, when a read before went beyond the block's end
   * or `samples` is null. A read that begins exactly at the end, as the first one ever, gives
   * silence. */
  int32_t(KELVO_METHOD* GetVisualisation)(KELVO_SELF(KelvoWmaInput), int16_t* samples);

  /* Slot 17. Asks about any file by its path, independent of the open one; the library opens and
   * closes the file itself. 1 when it is a Windows Media file, else 0. Every output may be null,
   * and is cleared first in any case; the texts are buffers of KELVO_MAX_TEXT characters. `info`
   * has the sample rate in kHz. `sdk_version`: of the software that wrote the file. */
  int32_t(KELVO_METHOD* GetFileInfo)(KELVO_SELF(KelvoWmaInput), const wchar_t* path,
                                     wchar_t* display_title, wchar_t* album, KelvoMediaInfo* info,
                                     uint32_t* length_ms, uint32_t* sdk_version, wchar_t* artist,
                                     wchar_t* title);

  /* Slot 18. The parent of the message box, and the window that receives
   * KELVO_MESSAGE_END_OF_PLAYBACK (messages.h); null for none. */
  void(KELVO_METHOD* SetOwnerWindow)(KELVO_SELF(KelvoWmaInput), KelvoWindowHandle window);
} KelvoWmaInputTable;
struct KelvoWmaInput {
  const KelvoWmaInputTable* table;
  KelvoHostWord host_context; /* the library never reads it */
  KelvoAudioOutput* output;   /* the host's, set before Play; borrowed until Stop and Close */
  KelvoMediaReader* reader;   /* the host's, set before Open; borrowed until Stop and Close */
  uint32_t state;             /* a PlaybackState */
};

#endif
