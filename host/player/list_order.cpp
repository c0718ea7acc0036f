#include "host/player/list_order.h"

#include <algorithm>
#include <numeric>

namespace velmora {
namespace {

bool IsDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

// Between two parts of a path lies less than in any name.
char16_t Rank(char16_t c) {
  return c == u'\\' ? u'\0' : c;
}

// Takes a number off the front, without the zeros that it begins with.
std::u16string_view TakeNumber(std::u16string_view* text) {
  size_t end = 0;
  while (end < text->size() && IsDigit((*text)[end])) ++end;
  std::u16string_view number = text->substr(0, end);
  text->remove_prefix(end);
  number.remove_prefix(std::min(number.find_first_not_of(u'0'), number.size()));
  return number;
}

}  // namespace

int CompareNaturally(std::u16string_view a, std::u16string_view b) {
  const size_t lengths[] = {a.size(), b.size()};
  while (!a.empty() && !b.empty()) {
    if (IsDigit(a[0]) && IsDigit(b[0])) {
      const std::u16string_view left = TakeNumber(&a);
      const std::u16string_view right = TakeNumber(&b);
      if (left.size() != right.size()) return left.size() < right.size() ? -1 : 1;
      if (const int order = left.compare(right)) return order;
      continue;
    }
    if (a[0] != b[0]) return Rank(a[0]) < Rank(b[0]) ? -1 : 1;
    a.remove_prefix(1);
    b.remove_prefix(1);
  }
  if (a.empty() != b.empty()) return a.empty() ? -1 : 1;
  // Only zeros in front of numbers differ.
  return lengths[0] == lengths[1] ? 0 : lengths[0] < lengths[1] ? -1 : 1;
}

ListOrder SortedOrder(const Texts& keys) {
  ListOrder order(keys.size());
  std::iota(order.begin(), order.end(), size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](size_t a, size_t b) { return CompareNaturally(keys[a], keys[b]) < 0; });
  return order;
}

ListOrder ReversedOrder(size_t count) {
  ListOrder order(count);
  std::iota(order.rbegin(), order.rend(), size_t{0});
  return order;
}

ListOrder ShuffledOrder(size_t count, uint32_t seed) {
  ListOrder order(count);
  std::iota(order.begin(), order.end(), size_t{0});
  uint32_t random = seed * 2654435761u | 1;
  for (size_t i = count; i > 1; --i) {
    random ^= random << 13;
    random ^= random >> 17;
    random ^= random << 5;
    std::swap(order[i - 1], order[random % i]);
  }
  return order;
}

std::vector<size_t> FindWords(const Texts& texts, std::u16string_view wanted) {
  std::vector<std::u16string_view> words;
  while (!wanted.empty()) {
    const size_t end = std::min(wanted.find(u' '), wanted.size());
    if (end > 0) words.push_back(wanted.substr(0, end));
    wanted.remove_prefix(std::min(end + 1, wanted.size()));
  }
  std::vector<size_t> found;
  for (size_t i = 0; i < texts.size(); ++i) {
    const auto in_text = [&](std::u16string_view word) {
      return texts[i].find(word) != std::u16string::npos;
    };
    if (std::all_of(words.begin(), words.end(), in_text)) found.push_back(i);
  }
  return found;
}

}  // namespace velmora
