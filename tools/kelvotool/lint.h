#pragma once

#include "base/files/file_system.h"
#include "base/memory/array.h"
#include "base/memory/heap_text.h"
#include "playlist/list_entry.h"
#include "playlist/nesting_guard.h"

namespace kelvo::tool {

// Prints the lines of a playlist, and of the playlists in it, from which the player makes no entry,
// or one that is hardly meant, and why: "PATH:LINE: WHY: TEXT". Each list is looked at once.
class Lint {
 public:
  explicit Lint(FileSystem& files) noexcept : files_(files) {}

  // True when there is nothing to say.
  bool Check(const wchar_t* path) noexcept;

 private:
  // One list and its place in the nesting. On the heap: lists may be nested deeply.
  struct Place;

  void CheckList(const wchar_t* path, int depth) noexcept;
  void CheckLine(Place* place, const TextLine& line) noexcept;
  void CheckEntry(Place* place, const TextLine& line, const wchar_t* path) noexcept;
  void CheckSkipped(Place* place, const TextLine& line) noexcept;
  void Report(const Place& place, const TextLine& line, const char* why) noexcept;
  void Complain(const wchar_t* path, const char* what) noexcept;

  FileSystem& files_;
  ChainGuard chain_;
  Array<HeapText> seen_;
  bool clean_ = true;
};

}  // namespace kelvo::tool
