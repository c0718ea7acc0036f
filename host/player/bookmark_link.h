#pragma once

#include <windows.h>

#include <string>

#include "host/library.h"
#include "host/player/player.h"

namespace kelvo {
class Bookmarks;
}

namespace velmora {

// Bookmarks, and the place to resume at, for a player. The library's list is loaded with the
// object.
class BookmarkLink {
 public:
  BookmarkLink(const Library& library, Player& player);  // both outlive this

  // Adds the place that plays; false when nothing plays, or the file of the bookmarks cannot be
  // written: GetLastError tells why.
  bool AddCurrent();
  // The window; `parent` receives kMessagePlayBookmark, also while it is open.
  void Show(HWND parent);
  // kMessagePlayBookmark with its parameters: plays the bookmark in the list, to which its file is
  // added when it is not there, or appends the file.
  void OnPlayBookmark(WPARAM command, LPARAM index);

  // At the end of the program: where a track plays or rests; what was kept before is forgotten.
  void SavePlace();
  // At its start: plays on there; false when nothing was kept.
  bool ResumePlace();

 private:
  bool PlayListed(const std::wstring& path, uint32_t position_ms);
  // The place of an earlier run, which is then forgotten; false when there is none or its file is
  // gone.
  bool TakeLastPlayed(std::wstring* path, uint32_t* position_ms);

  Player& player_;
  kelvo::Bookmarks* const bookmarks_;
};

}  // namespace velmora
