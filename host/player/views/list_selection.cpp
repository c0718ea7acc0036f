#include "host/player/views/list_selection.h"

#include <algorithm>

namespace velmora {

void ListSelection::SetCount(size_t count) {
  rows_.resize(count);
  const size_t last = count == 0 ? 0 : count - 1;
  cursor_ = std::min(cursor_, last);
  anchor_ = std::min(anchor_, last);
}

std::vector<size_t> ListSelection::Indices() const {
  std::vector<size_t> indices;
  for (size_t i = 0; i < rows_.size(); ++i) {
    if (rows_[i]) indices.push_back(i);
  }
  return indices;
}

void ListSelection::OnClick(size_t index, Click click) {
  if (index >= rows_.size()) return;
  cursor_ = index;
  if (click == Click::kToggle) {
    rows_[index] = !rows_[index];
    anchor_ = index;
    return;
  }
  SelectAll(false);
  if (click == Click::kOnly) anchor_ = index;
  const auto ends = std::minmax(anchor_, index);
  for (size_t i = ends.first; i <= ends.second; ++i) rows_[i] = true;
}

void ListSelection::OnMoved(size_t from, size_t to) {
  if (from >= rows_.size() || to >= rows_.size()) return;
  const bool selected = rows_[from];
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(from));
  rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(to), selected);
  cursor_ = to;
  anchor_ = to;
}

void ListSelection::OnArranged(const std::vector<size_t>& order) {
  if (order.size() != rows_.size() || order.empty()) return;
  std::vector<bool> rows(order.size());
  size_t cursor = 0;
  for (size_t i = 0; i < order.size(); ++i) {
    rows[i] = rows_[order[i]];
    if (order[i] == cursor_) cursor = i;
  }
  rows_ = std::move(rows);
  cursor_ = anchor_ = cursor;
}

}  // namespace velmora
