#pragma once

#include <kelvo/catalog.h>
#include <windows.h>

#include <string>
#include <vector>

#include "host/library.h"
#include "host/player/player.h"
#include "host/system.h"

namespace velmora {

// The media catalog for a player. `device` is the folder that the catalog sees as the device; it
// becomes a drive for the life of this object, whose paths the catalog sends.
class CatalogLink {
 public:
  CatalogLink(const Library& library, Player& player, const std::wstring& device)
      : CatalogLink(library.Get<kelvo::Catalog>(kelvo::kFeatureCatalog), player, device) {}
  CatalogLink(kelvo::Catalog* catalog, Player& player, const std::wstring& device);
  ~CatalogLink();
  CatalogLink(const CatalogLink&) = delete;
  CatalogLink& operator=(const CatalogLink&) = delete;

  bool available() const { return catalog_ && drive_.ready(); }
  // Shows the sheet until the user closes it; `parent` receives the messages meanwhile.
  void Show(HMODULE module, HWND parent);
  // kMessageCatalogPlay; the kMessageCatalogPlayed that follows asks for nothing more. False when
  // nothing of what was chosen can be played.
  bool OnPlay() { return player_.PlayTrack(0); }

 private:
  // The catalog's choice comes in single calls; the player's list changes at the end.
  static void __cdecl OnPath(const wchar_t* path, kelvo::HostWord cookie);
  void TakePath(const wchar_t* path);
  void SayAdded(size_t added);

  Player& player_;
  kelvo::Catalog* const catalog_;
  const DeviceDrive drive_;
  bool replace_ = false;
  std::vector<std::wstring> paths_;
};

}  // namespace velmora
