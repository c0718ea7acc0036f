/* Compiled in place of the decoder's codebook.c, which it takes in whole: adds vectors to two
   channels at once, which is nearly all that stereo music has, in fewer instructions. The same
   values, the same bits taken from the packet, and the same result for a packet that ends early. */
#define vorbis_book_decodevv_add DecoderAddVectors
#include "codebook.c" /* NOLINT(bugprone-suspicious-include) */
#undef vorbis_book_decodevv_add

/* The place of the next codeword among the book's entries, or -1. */
static inline long NextEntry(codebook* book, oggpack_buffer* b) {
  /* With 4 bytes left, 24 bits are there whatever the first one is. */
  if (b->endbyte >= b->storage - 4 || book->dec_maxlength > 24) {
    return decode_packed_entry_number(book, b);
  }
  const unsigned char* p = b->ptr;
  const ogg_uint32_t bits =
      (p[0] | (ogg_uint32_t)p[1] << 8 | (ogg_uint32_t)p[2] << 16 | (ogg_uint32_t)p[3] << 24) >>
      b->endbit;
  const ogg_uint32_t first = book->dec_firsttable[bits & ((1u << book->dec_firsttablen) - 1)];
  long entry = (long)first - 1;
  if (first & 0x80000000u) {
    /* It says only between which entries; they are sorted by reversed codeword. */
    const ogg_uint32_t word = bitreverse(bits & ((1u << book->dec_maxlength) - 1));
    entry = first >> 15 & 0x7FFF;
    long count = book->used_entries - (first & 0x7FFF) - entry;
    const ogg_uint32_t* low = book->codelist + entry;
    for (; count > 1; count -= count >> 1) {
      if (low[count >> 1] <= word) low += count >> 1;
    }
    entry = low - book->codelist;
  }
  const int end = b->endbit + book->dec_codelengths[entry];
  b->ptr += end >> 3;
  b->endbyte += end >> 3;
  b->endbit = end & 7;
  return entry;
}

/* A compilation for each direction of the shift: one of the two is 0 there. */
static inline __attribute__((always_inline)) long AddToTwo(codebook* book, ogg_int32_t* next,
                                                           ogg_int32_t* other, oggpack_buffer* b,
                                                           long wanted, int right, int left) {
  while (wanted > 0) {
    const long entry = NextEntry(book, b);
    if (entry == -1) return -1;
    const long count = book->dim < wanted ? book->dim : wanted;
    const ogg_int32_t* value = book->valuelist + entry * book->dim;
    const ogg_int32_t* const end = value + (count & ~1);
    wanted -= count;
    while (value < end) {
      *next++ += *value++ >> right << left;
      *other++ += *value++ >> right << left;
    }
    if (count & 1) {
      ogg_int32_t* const after = next + 1;
      *next += *value >> right << left;
      next = other;
      other = after;
    }
  }
  return 0;
}

/* `n` values from `offset` on in each of `ch` channels; values of one vector go to one channel
   after the other. */
long vorbis_book_decodevv_add(codebook* book, ogg_int32_t** a, long offset, int ch,
                              oggpack_buffer* b, int n, int point) {
  if (ch != 2) return DecoderAddVectors(book, a, offset, ch, b, n, point);
  if (book->used_entries <= 0) return 0;
  const int shift = point - book->binarypoint;
  ogg_int32_t* const first = a[0] + offset;
  ogg_int32_t* const second = a[1] + offset;
  return shift >= 0 ? AddToTwo(book, first, second, b, 2 * (long)n, shift, 0)
                    : AddToTwo(book, first, second, b, 2 * (long)n, 0, -shift);
}
