/* Included before those files of the decoder that take codewords out of packets or make samples:
   the same results in fewer instructions, by functions that the compiler can put in place. */
#ifndef KELVO_DECODER_SPEED_H
#define KELVO_DECODER_SPEED_H

#include "ogg/ogg.h"

/* Within 16 bits. The decoder leaves out its own when this name is defined. */
#define _V_CLIP_MATH
static inline ogg_int32_t CLIP_TO_15(ogg_int32_t x) {
  return (ogg_uint32_t)x + 32768u > 65535u ? x >> 31 ^ 32767 : x;
}

/* Up to 24 bits, with 4 bytes to read them from; else the framing library sees to them. */
static inline long KelvoLook(oggpack_buffer* b, int bits) {
  const unsigned char* p = b->ptr;
  if (bits < 1 || bits > 24 || b->endbyte >= b->storage - 4) return oggpack_look(b, bits);
  const ogg_uint32_t four =
      p[0] | (ogg_uint32_t)p[1] << 8 | (ogg_uint32_t)p[2] << 16 | (ogg_uint32_t)p[3] << 24;
  return (long)(four >> b->endbit & ((1u << bits) - 1));
}

static inline void KelvoAdvance(oggpack_buffer* b, int bits) {
  const int end = b->endbit + bits;
  if (bits < 0 || b->endbyte > b->storage - ((end + 7) >> 3)) {
    oggpack_adv(b, bits);
    return;
  }
  b->ptr += end >> 3;
  b->endbyte += end >> 3;
  b->endbit = end & 7;
}

#define oggpack_look KelvoLook
#define oggpack_adv KelvoAdvance

#endif
