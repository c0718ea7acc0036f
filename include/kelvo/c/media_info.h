/* Generated from tools/contract/media_info.txt. */
#ifndef KELVO_C_MEDIA_INFO_H
#define KELVO_C_MEDIA_INFO_H

#include <stddef.h>
#include <stdint.h>
#include <wchar.h>

/* What an input plug-in tells about a file's format. The caller zero-fills the record first. */
typedef struct KelvoMediaInfo {
  wchar_t genre[32];    /* NUL-terminated, at most 31 characters */
  uint32_t sample_rate; /* Hz from Ogg Vorbis, kHz (such as 44) from Windows Media */
  uint32_t bit_rate;    /* kbit/s */
  uint32_t stereo;      /* 0 or 1 */
  int32_t track;        /* without one: 0 from Ogg Vorbis, 100000 from Windows Media */
} KelvoMediaInfo;

#endif
