// What is photographed: groups of shots, one file each, all listed in main.cpp.
#pragma once

#include <cstddef>

namespace screenshots {

class Studio;
class User;

struct Shot {
  const wchar_t* name;   // of the picture's file
  void (*pose)(User&);   // from what the shot before left to what is to be seen
  void (*leave)(User&);  // closes what was opened above it; may be null
};

// The shots of one window, taken one after the other while it is open.
struct Group {
  void (*open)(Studio&);  // on the user-interface thread; returns when the window was closed
  const Shot* shots;
  size_t count;
  void (*close)(User&);  // null when the last shot's `leave` closes the window
};

template <size_t kCount>
constexpr Group MakeGroup(void (*open)(Studio&), const Shot (&shots)[kCount],
                          void (*close)(User&)) {
  return {open, shots, kCount, close};
}

extern const Group kCatalogGroup;
extern const Group kSaveGroup;  // after the catalog's: it needs a current playlist
extern const Group kBookmarkGroup;
extern const Group kPresetNameGroup;
extern const Group kPresetOverwriteGroup;
extern const Group kPlayerGroup;

}  // namespace screenshots
