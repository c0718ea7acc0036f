#pragma once

#include <stddef.h>
#include <stdint.h>

#include <string>
#include <vector>

#include "host/library.h"
#include "host/trouble.h"

namespace velmora {

struct Track {
  std::wstring path;       // full
  std::wstring title;      // display title, or the file's name
  uint32_t length_ms = 0;  // 0: unknown
  bool known = false;      // the file has been asked about itself
  Trouble trouble =
      Trouble::kNone;  // why it could not be asked, or not be played when it was tried
};

class TrackList {
 public:
  const std::vector<Track>& tracks() const { return tracks_; }
  size_t size() const { return tracks_.size(); }

  // False when the list is full, or the path longer than plug-ins take.
  bool Append(const std::wstring& path);
  void Clear();
  void Remove(size_t index);
  void Move(size_t from, size_t to);
  void Arrange(const std::vector<size_t>& order);  // place i gets what was at order[i]

  // Takes what a file says about itself from the plug-ins.
  void Learn(const Library& library, size_t index);
  void SetTrouble(size_t index, Trouble trouble) { tracks_[index].trouble = trouble; }
  // The first track that is not known; the size when all are.
  size_t FirstUnknown();

 private:
  std::vector<Track> tracks_;
  size_t known_before_ = 0;  // all before are known
};

}  // namespace velmora
