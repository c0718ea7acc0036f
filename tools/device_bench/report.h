// What a run found: one line a figure, held against its recorded budget.
#pragma once

#include <map>
#include <string>

namespace bench {

// A fault of the emulated program, or of this one: says what, and ends the run.
[[noreturn]] [[gnu::format(printf, 1, 2)]] void Fail(const char* format, ...);

class Report {
 public:
  // The file has lines of a name and a number; "#" starts a comment.
  explicit Report(const std::string& budgets);

  // More than 3 % above the budget fails, as does a figure without one; 3 % or more below asks for
  // a new one.
  void Figure(const std::string& name, double figure, const char* unit);

  // The exit code.
  int Finish() const;

 private:
  std::map<std::string, double> budgets_;
  int figures_ = 0, failures_ = 0;
};

}  // namespace bench
