#pragma once

#include "base/memory/array.h"
#include "base/memory/heap_text.h"

namespace kelvo {

// The paths of the playlists found on the device. Grows by 100 at a time.
class PlaylistFiles {
 public:
  static constexpr size_t kGrowth = 100;

  // False, with the list as before, when memory is out.
  bool Add(const wchar_t* path) noexcept {
    if (paths_.size() == paths_.capacity() && !paths_.Reserve(paths_.capacity() + kGrowth)) {
      return false;
    }
    HeapText copy;
    return copy.Assign(path) && paths_.Append(std::move(copy));
  }
  size_t size() const noexcept { return paths_.size(); }
  const wchar_t* operator[](size_t i) const noexcept { return paths_[i].c_str(); }
  void Replace(size_t i, HeapText path) noexcept { paths_[i] = std::move(path); }
  void RemoveAt(size_t i) noexcept { paths_.RemoveAt(i); }
  void Clear() noexcept { paths_.Clear(); }

 private:
  Array<HeapText> paths_;
};

}  // namespace kelvo
