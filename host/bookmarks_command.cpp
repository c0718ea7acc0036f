// velmora bookmarks: the window, or the list on the console.
#include <kelvo/bookmarks.h>

#include "host/command.h"
#include "host/console.h"
#include "host/host_window.h"
#include "host/minutes_seconds.h"
#include "host/play_command.h"

namespace velmora {
namespace {

int List(kelvo::Bookmarks& bookmarks) {
  const int32_t count = bookmarks.LoadBookmarks();
  for (int32_t i = 0; i < count; ++i) {
    wchar_t path[kelvo::kMaxText] = L"";
    wchar_t text[kelvo::kMaxText] = L"";
    int32_t position_s = 0;
    const bool exists = bookmarks.GetBookmark(i, path, text, &position_s) != 0;
    Print(L"%3d  %6ls  %ls  %ls%ls\n", i, MinutesSeconds(int64_t{position_s} * 1000).text, path,
          text, exists ? L"" : L"  (file missing)");
  }
  return 0;
}

int Add(kelvo::Bookmarks& bookmarks, const Words& words) {
  bookmarks.LoadBookmarks();  // a list that was never loaded would replace the file
  const int32_t position_s = static_cast<int32_t>(wcstol(words[2].c_str(), nullptr, 10));
  if (bookmarks.AddBookmark(words[1].c_str(), position_s, words[3].c_str())) return 0;
  PrintError(L"velmora: the bookmark cannot be added\n");
  return 1;
}

// Shows the window, then does what the user asked for in it. A player would do so at once; this one
// cannot play while a window is open.
int Show(const Library& library, kelvo::Bookmarks& bookmarks) {
  PlayOptions options;
  {
    const HostWindow host;
    if (bookmarks.ShowBookmarks(host.handle())) {
      PrintError(L"velmora: the window cannot be opened\n");
      return 1;
    }
    for (const BookmarkRequest& request : host.requests()) {
      wchar_t path[kelvo::kMaxText] = L"";
      int32_t position_s = 0;
      const bool exists = bookmarks.GetBookmark(request.index, path, nullptr, &position_s) != 0;
      Print(L"%ls %ls at %ls%ls\n", request.play ? L"play" : L"enqueue", path,
            MinutesSeconds(int64_t{position_s} * 1000).text, exists ? L"" : L": no such file");
      if (!exists) continue;
      if (request.play) {
        options.files.clear();
        options.start_s = position_s;
      }
      options.files.push_back(path);
    }
  }
  return options.files.empty() ? 0 : Play(library, options);
}

}  // namespace

int BookmarksCommand(const Library& library, const Words& words) {
  auto* bookmarks = library.Get<kelvo::Bookmarks>(kelvo::kFeatureBookmarks);
  if (!bookmarks) {
    PrintError(L"Kelvo.dll does not offer bookmarks\n");
    return 1;
  }
  if (words.empty()) return Show(library, *bookmarks);
  if (words.size() == 1 && words[0] == L"--list") return List(*bookmarks);
  if (words.size() == 4 && words[0] == L"--add") return Add(*bookmarks, words);
  PrintError(L"usage: velmora bookmarks [--list | --add PATH SECONDS TEXT]\n");
  return 1;
}

}  // namespace velmora
