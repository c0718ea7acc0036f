#include "host/last_played.h"

#include <kelvo/bookmarks.h>

#include "host/full_path.h"

namespace velmora {

void StoreLastPlayed(const Library& library, const std::wstring& path, int position_ms,
                     const wchar_t* title) {
  auto* bookmarks = library.Get<kelvo::Bookmarks>(kelvo::kFeatureBookmarks);
  if (!bookmarks) return;
  const std::wstring full = FullPath(path);  // the next run may start elsewhere
  if (full.empty()) return;
  bookmarks->LoadBookmarks();
  bookmarks->SetLastPlayed(full.c_str(), position_ms / 1000, title);
}

bool TakeLastPlayed(const Library& library, std::wstring* path, int* position_s) {
  auto* bookmarks = library.Get<kelvo::Bookmarks>(kelvo::kFeatureBookmarks);
  wchar_t text[kelvo::kMaxText] = L"";
  int32_t seconds = 0;
  if (!bookmarks || bookmarks->LoadBookmarks() == 0) return false;
  if (!bookmarks->TakeLastPlayed(text, &seconds)) return false;
  *path = text;
  *position_s = seconds;
  return true;
}

}  // namespace velmora
