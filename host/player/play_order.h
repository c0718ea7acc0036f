// Which track of a list comes next. Portable.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include <vector>

namespace velmora {

constexpr size_t kNoTrack = static_cast<size_t>(-1);

// Tracks are known by their indices in the list. Shuffled, every track comes once before one comes
// again.
class PlayOrder {
 public:
  explicit PlayOrder(uint32_t seed) : random_(seed * 2654435761u | 1) {}

  void SetShuffle(bool shuffle);
  void SetRepeat(bool repeat) { repeat_ = repeat; }
  bool shuffle() const { return shuffle_; }
  bool repeat() const { return repeat_; }

  // The same changes as in the list. When the current track is removed there is none, and Next goes
  // to the one that would have followed.
  void Append(size_t count);
  void Remove(size_t index);
  void Move(size_t from, size_t to);
  void Arrange(const std::vector<size_t>& order);  // place i gets what was at order[i]
  void Clear();

  size_t size() const { return order_.size(); }
  size_t current() const { return has_current_ ? order_[place_] : kNoTrack; }
  // Shuffled, tracks that have not come yet still will.
  void SetCurrent(size_t index);
  // Makes the next or previous track the current one and returns it; kNoTrack, and nothing changes,
  // at the end of the list without repeat.
  size_t Next();
  size_t Previous();

 private:
  uint32_t Random(uint32_t limit);
  void ShuffleFrom(size_t first);
  size_t PlaceOf(size_t index) const;
  void Straighten();
  size_t StepTo(size_t place);

  std::vector<size_t> order_;  // of the indices
  // Where in `order_` the current track is; without one, where the next is.
  size_t place_ = 0;
  bool has_current_ = false;
  bool shuffle_ = false;
  bool repeat_ = false;
  uint32_t random_;
};

}  // namespace velmora
