#pragma once

#include <windows.h>

#include <string>
#include <utility>
#include <vector>

namespace velmora {

// Looks for media in files, folders and playlists, a little at a time, so that who has a window
// can go on showing it.
class FileSearch {
 public:
  // Of folders all files and the folders below, as people sort names; playlists are read when they
  // are named here, not when they lie in a folder. A media file need not be there.
  explicit FileSearch(const std::vector<std::wstring>& paths);
  ~FileSearch();
  FileSearch(const FileSearch&) = delete;
  FileSearch& operator=(const FileSearch&) = delete;

  // Appends what the next few files give; false when all have been looked at.
  bool Step(std::vector<std::wstring>* found);
  // Files of no kind that the library plays, so far: those named here or in playlists.
  size_t left_out() const { return left_out_; }

 private:
  struct Item {
    std::wstring path;  // full
    bool is_folder;
  };
  // What is still to do in one folder, the next last. While `search` is open it is being listed.
  struct Level {
    std::vector<Item> items;
    HANDLE search = INVALID_HANDLE_VALUE;
    WIN32_FIND_DATAW next = {};
    std::wstring folder;
  };

  void Enter(const std::wstring& folder);
  void List(Level* level);
  void Take(const std::wstring& path, std::vector<std::wstring>* found);

  std::vector<Level> levels_;
  size_t left_out_ = 0;
};

}  // namespace velmora
