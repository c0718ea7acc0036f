// The list of bookmarks and its file as they are described: units of UTF-16, one after the other.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "tests/oracles/model_text.h"

namespace kelvo::oracle {

struct BookmarkOf {
  Units path, description;
  int32_t position_s = 0;
};

class BookmarksModel {
 public:
  std::set<Units> existing;  // files
  std::string file;          // the bytes of "bookmarks.dat"
  std::vector<BookmarkOf> list;

  void Load() {
    list.clear();
    units_ = UnitsOf(file);
    at_ = 0;
    for (Units path = Line(); !path.empty(); path = Line()) {
      if (at_ == units_.size()) return;  // no position line
      const int32_t position = Number(Line());
      list.push_back({path, Line(), position});
    }
  }

  void Add(const Units& path, int32_t position_s, const Units& description) {
    list.push_back({Cut(path), Cut(description), position_s});
    Save();
  }
  void Update(int32_t index, const Units& path, int32_t position_s, const Units& description) {
    if (!Has(index)) return;
    list[static_cast<size_t>(index)] = {Cut(path), Cut(description), position_s};
    Save();
  }
  bool Exists(int32_t index) const {
    return Has(index) && existing.count(list[static_cast<size_t>(index)].path) != 0;
  }
  void Remove(int32_t index) {
    if (!Has(index)) return;
    list.erase(list.begin() + index);
    Save();
  }
  void RemoveDead() {
    for (auto i = static_cast<int32_t>(list.size()) - 1; i >= 0; --i) {
      if (!Exists(i)) list.erase(list.begin() + i);
    }
    Save();
  }
  void SetLastPlayed(const Units& path, int32_t position_s, const Units& title) {
    if (list.empty() || !IsLastPlayed()) list.insert(list.begin(), BookmarkOf());
    list[0] = {Cut(path), Cut(u"(Last Played) " + title), position_s};
    Save();
  }
  bool TakeLastPlayed() {
    if (list.empty() || !Exists(0) || !IsLastPlayed()) return false;
    list.erase(list.begin());
    Save();
    return true;
  }
  bool Has(int32_t index) const { return index >= 0 && index < static_cast<int32_t>(list.size()); }

  // A break inside a text would end its line, and a bookmark without a path the list.
  void Save() {
    file.clear();
    for (const BookmarkOf& bookmark : list) {
      if (bookmark.path.empty()) continue;
      Units position;
      for (const char digit : std::to_string(bookmark.position_s)) {
        position += static_cast<char16_t>(digit);
      }
      for (const Units& text : {bookmark.path, position, bookmark.description}) {
        for (const char16_t unit : text) Write(unit == 13 || unit == 10 ? u' ' : unit);
        Write(13);
        Write(10);
      }
    }
  }

 private:
  static Units Cut(const Units& text) { return text.substr(0, 259); }

  bool IsLastPlayed() const {
    return Upper(list[0].description.substr(0, 14)) == u"(LAST PLAYED) ";
  }

  Units Line() {
    Units line;
    while (at_ < units_.size() && units_[at_] != 13) line += units_[at_++];
    // The return, and the line feed, whatever it is.
    for (int i = 0; i < 2 && at_ < units_.size(); ++i) ++at_;
    return UpToNul(Cut(line));  // what a buffer of 260 holds
  }
  static int32_t Number(const Units& text) {
    size_t at = 0;
    while (at < text.size() && (text[at] == ' ' || (text[at] >= 9 && text[at] <= 13))) ++at;
    const bool negative = at < text.size() && text[at] == '-';
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
    int64_t number = 0;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
      if (number < int64_t{1} << 40) number = number * 10 + (text[at] - '0');
    }
    if (negative) number = -number;
    return static_cast<int32_t>(number > INT32_MAX   ? INT32_MAX
                                : number < INT32_MIN ? INT32_MIN
                                                     : number);
  }

  void Write(char16_t unit) {
    file += static_cast<char>(unit & 0xFF);
    file += static_cast<char>(unit >> 8);
  }

  Units units_;  // of the file
  size_t at_ = 0;
};

}  // namespace kelvo::oracle
