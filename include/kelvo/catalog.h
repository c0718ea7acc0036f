// Feature 1: the catalog, a full-screen sheet of three pages in which the user looks through the
// device's music, edits tags and playlists, and sends files to the host for playing.
//
// Order of calls: SetHostCallback once, then ShowCatalog as often as wanted. The first showing
// searches the device for media half a second after the sheet appeared; later ones show what was
// found before. The list of files that the user puts together lives as long as the library.
//
// Thread: all operations on the host's user-interface thread, and on no other while the sheet is
// open. The callback runs on that thread too.
//
// Generated from tools/contract/catalog.txt.
#pragma once

#include "kelvo/types.h"

namespace kelvo {

// Receives the user's choice, one call each: the path of a file (valid during the call), or one of
// the two marks below. The cookie is the one given to SetHostCallback.
using CatalogCallback = void(KELVO_CDECL*)(const wchar_t* path, HostWord cookie);

// Play: clear the list, the files, the end; then kMessageCatalogPlay and kMessageCatalogPlayed are
// posted (messages.h). Enqueue: the files and the end; nothing is posted.
constexpr const wchar_t* kCatalogClearList = nullptr;
inline const wchar_t* CatalogEndOfList() noexcept {
  return reinterpret_cast<const wchar_t*>(static_cast<intptr_t>(-1));
}

class Catalog {
 public:
  // Slot 0. A null function or a cookie of 0 means that nothing is sent.
  virtual void SetHostCallback(CatalogCallback function, HostWord cookie) noexcept = 0;

  // Slot 1. Shows the sheet above `parent`, which also receives the messages, and returns when the
  // user has closed it. `host_module` supplies the dialog for saving playlists with its menu bar,
  // icons and strings (host_resources.h). 1 when the sheet was shown; 0 when it could not be
  // created or is open already.
  virtual int32_t ShowCatalog(ModuleHandle host_module, WindowHandle parent) noexcept = 0;

  // Slot 2. Frees the lists; harmless when repeated. Bit 0 of `flags` asks to give the object's own
  // memory back too. For the library's unloading; never to be called by the host on what GetFeature
  // returned.
  virtual void Destroy(uint32_t flags) noexcept = 0;

 protected:
  ~Catalog() = default;
};

}  // namespace kelvo
