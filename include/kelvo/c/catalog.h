/* Feature 1: the catalog, a full-screen sheet of three pages in which the user looks through
 * the device's music, edits tags and playlists, and sends files to the host for playing.
 *
 * Order of calls: SetHostCallback once, then ShowCatalog as often as wanted. The first showing
 * searches the device for media half a second after the sheet appeared; later ones show what
 * was found before. The list of files that the user puts together lives as long as the
 * library.
 *
 * Thread: all operations on the host's user-interface thread, and on no other while the sheet
 * is open. The callback runs on that thread too.
 *
 * Generated from tools/contract/catalog.txt. */
#ifndef KELVO_C_CATALOG_H
#define KELVO_C_CATALOG_H

#include "types.h"

/* Receives the user's choice, one call each: the path of a file (valid during the call), or
 * one of the two marks below. The cookie is the one given to SetHostCallback. */
typedef void(KELVO_CDECL* KelvoCatalogCallback)(const wchar_t* path, KelvoHostWord cookie);

/* Play: clear the list, the files, the end; then KELVO_MESSAGE_CATALOG_PLAY and
 * KELVO_MESSAGE_CATALOG_PLAYED are posted (messages.h). Enqueue: the files and the end;
 * nothing is posted. */
#define KELVO_CATALOG_CLEAR_LIST ((const wchar_t*)0)
#define KELVO_CATALOG_END_OF_LIST ((const wchar_t*)(intptr_t)-1)

typedef struct KelvoCatalog KelvoCatalog;
typedef struct KelvoCatalogTable {
  /* Slot 0. A null function or a cookie of 0 means that nothing is sent. */
  void(KELVO_METHOD* SetHostCallback)(KELVO_SELF(KelvoCatalog), KelvoCatalogCallback function,
                                      KelvoHostWord cookie);

  /* Slot 1. Shows the sheet above `parent`, which also receives the messages, and returns when
   * the user has closed it. `host_module` supplies the dialog for saving playlists with its menu
   * bar, icons and strings (host_resources.h). 1 when the sheet was shown; 0 when it could not
   * be created or is open already. */
  int32_t(KELVO_METHOD* ShowCatalog)(KELVO_SELF(KelvoCatalog), KelvoModuleHandle host_module,
                                     KelvoWindowHandle parent);

  /* Slot 2. Frees the lists; harmless when repeated. Bit 0 of `flags` asks to give the object's
   * own memory back too. For the library's unloading; never to be called by the host on what
   * GetFeature returned. */
  void(KELVO_METHOD* Destroy)(KELVO_SELF(KelvoCatalog), uint32_t flags);
} KelvoCatalogTable;
struct KelvoCatalog {
  const KelvoCatalogTable* table;
};

#endif
