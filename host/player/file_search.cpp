#include "host/player/file_search.h"

#include <algorithm>

#include "host/input.h"
#include "host/player/list_order.h"
#include "host/player/playlist_files.h"
#include "host/system.h"
#include "host/text.h"

namespace velmora {
namespace {

constexpr size_t kMaxDepth = 16;  // of folders
constexpr int kNamesAtOnce = 200;

bool IsFolder(DWORD attributes) {
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace

FileSearch::FileSearch(const std::vector<std::wstring>& paths) {
  Level named;
  for (auto path = paths.rbegin(); path != paths.rend(); ++path) {
    const std::wstring full = FullPath(*path);  // the program's current folder may change
    named.items.push_back({full, IsFolder(GetFileAttributesW(full.c_str()))});
  }
  levels_.push_back(std::move(named));
}

FileSearch::~FileSearch() {
  for (const Level& level : levels_) {
    if (level.search != INVALID_HANDLE_VALUE) FindClose(level.search);
  }
}

void FileSearch::Enter(const std::wstring& folder) {
  Level level;
  level.folder = folder;
  if (level.folder.back() == L'\\') level.folder.pop_back();
  level.search = FindFirstFileW((level.folder + L"\\*").c_str(), &level.next);
  levels_.push_back(std::move(level));
}

// A part of the folder's names; sorted once all are there.
void FileSearch::List(Level* level) {
  for (int i = 0; i < kNamesAtOnce; ++i) {
    const std::wstring name = level->next.cFileName;
    if (name != L"." && name != L"..") {
      level->items.push_back(
          {level->folder + L"\\" + name, IsFolder(level->next.dwFileAttributes)});
    }
    if (FindNextFileW(level->search, &level->next)) continue;
    FindClose(level->search);
    level->search = INVALID_HANDLE_VALUE;
    Texts keys;
    for (const Item& item : level->items) keys.push_back(Folded(item.path));
    std::vector<Item> sorted;
    for (const size_t place : SortedOrder(keys)) sorted.push_back(std::move(level->items[place]));
    std::reverse(sorted.begin(), sorted.end());
    level->items = std::move(sorted);
    return;
  }
}

void FileSearch::Take(const std::wstring& path, std::vector<std::wstring>* found) {
  const bool named = levels_.size() == 1;
  if (Input::IsMedia(path)) {
    found->push_back(path);
  } else if (named && IsPlaylist(path)) {
    left_out_ += ReadPlaylist(path, found);
  } else if (named) {
    ++left_out_;
  }
}

bool FileSearch::Step(std::vector<std::wstring>* found) {
  for (int i = 0; i < kNamesAtOnce && !levels_.empty(); ++i) {
    Level& level = levels_.back();
    if (level.search != INVALID_HANDLE_VALUE) {
      List(&level);
      return true;
    }
    if (level.items.empty()) {
      levels_.pop_back();
      continue;
    }
    const Item item = std::move(level.items.back());
    level.items.pop_back();
    if (!item.is_folder) {
      Take(item.path, found);
    } else if (levels_.size() <= kMaxDepth) {
      Enter(item.path);
    }
  }
  return !levels_.empty();
}

}  // namespace velmora
