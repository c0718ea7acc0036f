#include "report.h"

#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>

#include <fstream>
#include <sstream>

namespace bench {

void Fail(const char* format, ...) {
  fflush(stdout);
  fputs("device_bench: ", stderr);
  va_list arguments;
  va_start(arguments, format);
  vfprintf(stderr, format, arguments);
  va_end(arguments);
  fputc('\n', stderr);
  exit(1);
}

Report::Report(const std::string& budgets) {
  std::ifstream stream(budgets);
  if (!stream) Fail("cannot read %s", budgets.c_str());
  for (std::string line; std::getline(stream, line);) {
    std::istringstream words(line.substr(0, line.find('#')));
    std::string name;
    double figure;
    if (words >> name >> figure) budgets_[name] = figure;
  }
}

void Report::Figure(const std::string& name, double figure, const char* unit) {
  constexpr double kTolerance = 0.03;
  ++figures_;
  const auto budget = budgets_.find(name);
  if (budget == budgets_.end() || figure > budget->second * (1 + kTolerance)) {
    ++failures_;
    printf("FAIL ");
  } else {
    printf("ok   ");
  }
  printf("%-18s %7.2f %s", name.c_str(), figure, unit);
  if (budget == budgets_.end()) {
    puts(", which has no recorded budget");
  } else {
    printf(", budget %.2f%s\n", budget->second,
           figure < budget->second * (1 - kTolerance) ? ": record the lower figure" : "");
  }
}

int Report::Finish() const {
  printf("%d figures, %d above their budgets\n", figures_, failures_);
  return failures_ == 0 && figures_ > 0 ? 0 : 1;
}

}  // namespace bench
