#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/player/file_search.h"
#include "host/player/player.h"

namespace velmora {

// Adds files, folders and playlists to a player's list, a little at a time: a folder may hold very
// many, and the window is to go on meanwhile.
class Adding {
 public:
  explicit Adding(Player& player) : player_(player) {}  // outlives this

  // After what is being added already; or in place of that and of the list, which stays until
  // something is found.
  void Start(const std::vector<std::wstring>& paths, bool replace);
  bool active() const { return search_ != nullptr; }
  // False at the end, which also comes when the list is full.
  bool Step();
  // What has been added stays.
  void Stop();
  // Whether the last step has put what it found in place of the list.
  bool replaced() const { return replaced_; }
  // Whether there was but one step.
  bool at_once() const { return steps_ == 1; }

  // Since the last start.
  size_t added() const { return added_; }
  // Of no kind that the library plays.
  size_t left_out() const { return left_out_ + (search_ ? search_->left_out() : 0); }
  bool full() const { return full_; }

 private:
  void Take(const std::vector<std::wstring>& files);

  Player& player_;
  std::unique_ptr<FileSearch> search_;
  std::vector<std::wstring> next_;  // to look at afterwards
  bool replace_ = false;
  bool replaced_ = false;
  int steps_ = 0;
  size_t added_ = 0;
  size_t left_out_ = 0;
  bool full_ = false;
};

}  // namespace velmora
