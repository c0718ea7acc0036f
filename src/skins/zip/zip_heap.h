/* Where the zip reader's memory comes from; C, since its sources are compiled with it. */
#ifndef KELVO_SKINS_ZIP_ZIP_HEAP_H_
#define KELVO_SKINS_ZIP_ZIP_HEAP_H_

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

void* KelvoZipAllocate(size_t bytes);
void KelvoZipFree(void* block); /* null is allowed */

#ifdef __cplusplus
}
#endif

#endif
