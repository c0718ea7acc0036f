#include "host/player/play_order.h"

#include <algorithm>

namespace velmora {

uint32_t PlayOrder::Random(uint32_t limit) {
  random_ ^= random_ << 13;
  random_ ^= random_ >> 17;
  random_ ^= random_ << 5;
  return random_ % limit;
}

void PlayOrder::ShuffleFrom(size_t first) {
  for (size_t i = order_.size(); i > first + 1; --i) {
    const size_t other = first + Random(static_cast<uint32_t>(i - first));
    std::swap(order_[i - 1], order_[other]);
  }
}

size_t PlayOrder::PlaceOf(size_t index) const {
  return std::find(order_.begin(), order_.end(), index) - order_.begin();
}

// The list's own order.
void PlayOrder::Straighten() {
  const size_t next = place_ < order_.size() ? order_[place_] : order_.size();
  std::sort(order_.begin(), order_.end());
  place_ = next;
}

void PlayOrder::SetShuffle(bool shuffle) {
  if (shuffle == shuffle_) return;
  shuffle_ = shuffle;
  if (!shuffle) {
    Straighten();
  } else if (has_current_) {
    std::swap(order_[0], order_[place_]);
    place_ = 0;
    ShuffleFrom(1);
  } else {
    place_ = 0;
    ShuffleFrom(0);
  }
}

void PlayOrder::Append(size_t count) {
  for (; count > 0; --count) {
    const size_t index = order_.size();
    order_.push_back(index);
    const size_t first = std::min(place_ + has_current_, index);
    if (shuffle_) {
      std::swap(order_[index], order_[first + Random(static_cast<uint32_t>(index - first + 1))]);
    }
  }
}

void PlayOrder::Remove(size_t index) {
  const size_t place = PlaceOf(index);
  if (place == order_.size()) return;
  order_.erase(order_.begin() + place);
  for (size_t& other : order_) other -= other > index;
  if (place < place_) {
    --place_;
  } else if (place == place_) {
    has_current_ = false;
  }
}

void PlayOrder::Move(size_t from, size_t to) {
  if (from >= size() || to >= size()) return;
  for (size_t& index : order_) {
    if (index == from) {
      index = to;
    } else if (from < index && index <= to) {
      --index;
    } else if (to <= index && index < from) {
      ++index;
    }
  }
  if (!shuffle_) Straighten();
}

void PlayOrder::Arrange(const std::vector<size_t>& order) {
  std::vector<size_t> place(order.size());
  for (size_t i = 0; i < order.size(); ++i) place[order[i]] = i;
  for (size_t& index : order_) index = place[index];
  if (!shuffle_) Straighten();
}

void PlayOrder::Clear() {
  order_.clear();
  place_ = 0;
  has_current_ = false;
}

void PlayOrder::SetCurrent(size_t index) {
  if (index >= size() || index == current()) return;
  const size_t place = PlaceOf(index);
  if (!shuffle_) {
    StepTo(place);
    return;
  }
  // It comes now; those before it in the order keep their turns.
  order_.erase(order_.begin() + place);
  if (place < place_) --place_;
  place_ = std::min(place_ + has_current_, order_.size());
  order_.insert(order_.begin() + place_, index);
  has_current_ = true;
}

size_t PlayOrder::Next() {
  const size_t next = place_ + has_current_;
  if (next < size()) return StepTo(next);
  if (!repeat_ || size() == 0) return kNoTrack;
  if (shuffle_) {
    const size_t last = order_.back();
    ShuffleFrom(0);
    if (size() > 1 && order_[0] == last) std::swap(order_.front(), order_.back());
  }
  return StepTo(0);
}

size_t PlayOrder::Previous() {
  if (place_ > 0) return StepTo(place_ - 1);
  if (!repeat_ || size() == 0) return kNoTrack;
  return StepTo(size() - 1);
}

size_t PlayOrder::StepTo(size_t place) {
  place_ = place;
  has_current_ = true;
  return order_[place];
}

}  // namespace velmora
