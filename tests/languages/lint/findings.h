#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "tests/support/wide_text.h"

namespace kelvo::test {

inline std::string Quoted(const std::wstring& text) {
  std::string quoted = "'" + Utf8(text.c_str()) + "'";
  std::replace(quoted.begin(), quoted.end(), '\r', '|');
  return quoted;
}

class Findings {
 public:
  // Once each, however many places share the text.
  void Add(const std::string& where, const std::string& what) {
    const std::string line = where + ": " + what;
    if (std::find(lines_.begin(), lines_.end(), line) == lines_.end()) lines_.push_back(line);
  }
  const std::vector<std::string>& lines() const { return lines_; }

 private:
  std::vector<std::string> lines_;
};

}  // namespace kelvo::test
