/* Stands between the decoder and what it builds on: vorbisfile.c is compiled to call these two in place
   of the functions that they wrap (cmake/decoder.cmake). */
#include "ivorbiscodec.h"

long KelvoSyncPageSeek(ogg_sync_state* sync, ogg_page* page) {
  /* A page points into the sync buffer, which the next fetch overwrites or moves. Seeking in a damaged
     file, the decoder goes on with the page that it fetched before the fetch that failed. It then
     finds one without a body, of a version that no stream accepts. */
  static unsigned char no_page[27] = {'O', 'g', 'g', 'S', 0xFF};
  page->header = no_page;
  page->header_len = 0;
  page->body = no_page;
  page->body_len = 0;
  return ogg_sync_pageseek(sync, page);
}

int KelvoSynthesisInit(vorbis_dsp_state* state, vorbis_info* info) {
  /* Called again after a failure, it would take its half-built codebooks for complete. */
  if (vorbis_synthesis_init(state, info) != 0) KelvoDecoderAbandon();
  return 0;
}
