/* Replaces the Ogg library's own header of this name when it and the decoder are compiled: their
   memory comes from the heap of the stream that is being worked on (decoder_heap.h). */
#ifndef KELVO_OGG_OS_TYPES_H
#define KELVO_OGG_OS_TYPES_H

#include <stddef.h>
#include <stdint.h>

typedef int16_t ogg_int16_t;
typedef uint16_t ogg_uint16_t;
typedef int32_t ogg_int32_t;
typedef uint32_t ogg_uint32_t;
typedef int64_t ogg_int64_t;
typedef uint64_t ogg_uint64_t;

#ifdef __cplusplus
extern "C" {
#endif

void* KelvoDecoderMalloc(size_t bytes);
void* KelvoDecoderCalloc(size_t count, size_t bytes_each);
void* KelvoDecoderRealloc(void* block, size_t bytes);
void KelvoDecoderFree(void* block);
/* Lives until the call into the decoder ends. */
void* KelvoDecoderScratch(size_t bytes);
/* Ends the call into the decoder; nothing may be called with its state any more. */
void KelvoDecoderAbandon(void) __attribute__((noreturn));

#ifdef __cplusplus
}
#endif

#define _ogg_malloc KelvoDecoderMalloc
#define _ogg_calloc KelvoDecoderCalloc
#define _ogg_realloc KelvoDecoderRealloc
#define _ogg_free KelvoDecoderFree

#endif
