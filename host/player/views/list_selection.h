#pragma once

#include <stddef.h>

#include <vector>

namespace velmora {

// Which rows of a list are selected, as the user of a list expects it of clicks and arrow keys.
class ListSelection {
 public:
  enum class Click { kOnly, kToggle, kExtend };

  // Adapts to a list that has grown or shrunk at its end.
  void SetCount(size_t count);

  bool Has(size_t index) const { return index < rows_.size() && rows_[index]; }
  size_t cursor() const { return cursor_; }  // the row of the last click or key
  std::vector<size_t> Indices() const;

  // Alone; the others stay; or all from the last row clicked on to this one.
  void OnClick(size_t index, Click click);
  void SelectAll(bool selected) { rows_.assign(rows_.size(), selected); }
  void Invert() { rows_.flip(); }
  // A row has moved to another place in the list.
  void OnMoved(size_t from, size_t to);
  // Place i has the row that was at order[i].
  void OnArranged(const std::vector<size_t>& order);

 private:
  std::vector<bool> rows_;
  size_t cursor_ = 0;
  size_t anchor_ = 0;  // where extending starts
};

}  // namespace velmora
