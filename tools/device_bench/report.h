// What a run found: one line a check, figures against recorded budgets.
#pragma once

#include <stdint.h>

#include <map>
#include <string>

#include "cycle_model.h"

namespace bench {

class Report {
 public:
  void Check(const std::string& what, bool holds);
  template <class A, class B>
  void Equal(const std::string& what, const A& value, const B& want) {
    const bool holds = value == want;
    Check(holds ? what : what + ": " + Show(value) + ", not " + Show(want), holds);
  }

  // Lines of a name and a number; "#" starts a comment.
  void ReadBudgets(const std::string& path);
  // A count per second of audio. Above the budget by more than 3 % fails, as does one without
  // budget; 3 % or more below asks for a new budget.
  void Figure(const std::string& name, double millions);

  // The same for a count in another unit.
  void WithinBudget(const std::string& name, double count, const char* unit);

  // The same for an estimate of the processor's time, with where it goes.
  void Figure(const std::string& name, const Cycles& cycles, double seconds);

  // The exit code.
  int Finish() const;

 private:
  static std::string Show(const std::string& text) { return "\"" + text + "\""; }
  static std::string Show(const char* text) { return Show(std::string(text)); }
  static std::string Show(const std::u16string& text) {
    return Show(std::string(text.begin(), text.end()));
  }
  static std::string Show(const char16_t* text) { return Show(std::u16string(text)); }
  template <class Number>
  static std::string Show(Number number) {
    return std::to_string(number);
  }

  std::map<std::string, double> budgets_;
  int checks_ = 0;
  int failures_ = 0;
};

}  // namespace bench
