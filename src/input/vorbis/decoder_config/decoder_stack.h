/* Included before every file of the decoder, which takes scratch memory from the stack by sizes
   that the stream names: a codebook of a million entries, or the larger ones of six channels on the
   device's 64 KB. Above this size it comes from the stream's heap. */
#ifndef KELVO_DECODER_STACK_H
#define KELVO_DECODER_STACK_H

#ifdef _WIN32
#include <malloc.h>
#else
#include <alloca.h>
#endif

#include "ogg/os_types.h"

#define KELVO_MOST_STACK_BYTES 1024

#undef alloca
#define alloca(bytes) \
  ((bytes) <= KELVO_MOST_STACK_BYTES ? __builtin_alloca(bytes) : KelvoDecoderScratch(bytes))

#endif
