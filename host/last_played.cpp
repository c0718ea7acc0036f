#include "host/last_played.h"

#include <kelvo/bookmarks.h>

#include "host/command.h"
#include "host/console.h"
#include "host/play_command.h"

namespace velmora {

void StoreLastPlayed(const Library& library, const std::wstring& path, int position_ms,
                     const wchar_t* title) {
  auto* bookmarks = library.Get<kelvo::Bookmarks>(kelvo::kFeatureBookmarks);
  if (!bookmarks) return;
  wchar_t full[kelvo::kMaxText];  // the next run may start elsewhere
  const DWORD length = GetFullPathNameW(path.c_str(), kelvo::kMaxText, full, nullptr);
  if (length == 0 || length >= kelvo::kMaxText) return;
  bookmarks->LoadBookmarks();
  bookmarks->SetLastPlayed(full, position_ms / 1000, title);
}

int ResumeCommand(const Library& library, const Words& words) {
  PlayOptions options;
  if (!ParsePlayOptions(words, &options)) return 1;
  auto* bookmarks = library.Get<kelvo::Bookmarks>(kelvo::kFeatureBookmarks);
  wchar_t path[kelvo::kMaxText];
  int32_t position_s = 0;
  if (!options.files.empty() || !bookmarks) {
    PrintError(L"usage: velmora resume [--wav OUT]\n");
    return 1;
  }
  if (bookmarks->LoadBookmarks() == 0 || !bookmarks->TakeLastPlayed(path, &position_s)) {
    PrintError(L"velmora: nothing was interrupted\n");
    return 1;
  }
  options.files.push_back(path);
  options.start_s = position_s;
  return Play(library, options);
}

}  // namespace velmora
