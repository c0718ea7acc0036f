// Uses the catalog in another process, with the mouse where a user does.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>

#include "tests/player/program/player_process.h"

namespace velmora::test {

class CatalogUser {
 public:
  enum Page { kPlaylists, kMedia, kCurrent };

  explicit CatalogUser(PlayerProcess& player) : player_(player) {}

  // Opens the sheet and waits for the end of the search.
  bool Open();
  void Close();
  void GoTo(Page page);
  HWND page() const;
  // A button of the page's menu bar.
  void Press(int command);
  // Clicks the box of a node at the top of the media tree and waits for its check mark.
  bool CheckTopNode(const wchar_t* text);

 private:
  HTREEITEM FindTopNode(const wchar_t* text) const;
  int BoxOf(HTREEITEM node, const RECT& text) const;
  void ClickWithCursor(HWND window, int x, int y) const;

  PlayerProcess& player_;
  HWND sheet_ = nullptr;
};

}  // namespace velmora::test
