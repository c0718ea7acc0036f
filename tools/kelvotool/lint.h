#pragma once

#include "playlist/expansion.h"

namespace kelvo::tool {

// Prints the lines of a playlist, and of the playlists in it, from which the player makes no entry,
// or one that is hardly meant, and why: "PATH:LINE: WHY: TEXT". What becomes of a line is decided
// by the player's own expansion; each list is looked at once.
class Lint final : private PathSink, private NestingGuard {
 public:
  explicit Lint(FileSystem& files) noexcept : files_(files) {}

  // True when there is nothing to say.
  bool Check(const wchar_t* path) noexcept;

 private:
  void AddMedia(MediaKind kind, const wchar_t* path, const ListPosition* from) noexcept override;
  void Skip(Skipped why, const wchar_t* path, const ListPosition* from) noexcept override;
  bool Enter(const wchar_t* path) noexcept override;
  void Leave() noexcept override { chain_.Leave(); }
  bool CountLine() noexcept override { return chain_.CountLine(); }
  bool CountMedia() noexcept override { return chain_.CountMedia(); }

  bool WasSeen(const wchar_t* path) const noexcept;
  // What is wrong with a path, or with a skipped line; null when nothing is.
  const char* PathProblem(const wchar_t* path, const ListPosition& from) noexcept;
  const char* SkipProblem(Skipped why, const wchar_t* path, const ListPosition& from) noexcept;
  void Report(const ListPosition& from, const char* why) noexcept;
  void Complain(const wchar_t* path, const char* what) noexcept;

  FileSystem& files_;
  ChainGuard chain_;
  Array<HeapText> seen_;
  bool clean_ = true;
};

}  // namespace kelvo::tool
