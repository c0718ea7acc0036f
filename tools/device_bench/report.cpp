#include "report.h"

#include <stdio.h>

#include <fstream>
#include <sstream>

#include "fail.h"

namespace bench {
namespace {

constexpr double kTolerance = 0.03;
constexpr double kCyclesPerInstruction = 1.2, kDeviceMhz = 206;

}  // namespace

void Report::Check(const std::string& what, bool holds) {
  ++checks_;
  failures_ += !holds;
  printf("%s %s\n", holds ? "ok  " : "FAIL", what.c_str());
}

void Report::ReadBudgets(const std::string& path) {
  std::ifstream stream(path);
  if (!stream) Fail("cannot read %s", path.c_str());
  for (std::string line; std::getline(stream, line);) {
    std::istringstream words(line.substr(0, line.find('#')));
    std::string name;
    double millions;
    if (words >> name >> millions) budgets_[name] = millions;
  }
}

void Report::Figure(const std::string& name, double millions) {
  const double mhz = millions * kCyclesPerInstruction;
  printf("     %-24s %7.2f M instructions per second of audio, %5.1f MHz = %4.1f %% of %.0f MHz\n",
         name.c_str(), millions, mhz, 100 * mhz / kDeviceMhz, kDeviceMhz);
  WithinBudget(name, millions, "M");
}

void Report::Figure(const std::string& name, const Cycles& cycles, double seconds) {
  const double per_second = 1e-6 / seconds;
  printf(
      "     %-20s %6.2f M instructions, %6.2f MHz; %4.1f %% of it waiting for memory "
      "(%.0f lines of code and %.0f of data a second)\n",
      name.c_str(), static_cast<double>(cycles.instructions) * per_second, cycles.all * per_second,
      100 * cycles.memory / cycles.all, static_cast<double>(cycles.code_misses) / seconds,
      static_cast<double>(cycles.data_misses) / seconds);
  WithinBudget(name + "_mhz", cycles.all * per_second, "MHz");
}

void Report::WithinBudget(const std::string& name, double count, const char* unit) {
  const auto budget = budgets_.find(name);
  if (budget == budgets_.end()) {
    Check(name + " has no recorded budget", false);
    return;
  }
  char text[160];
  snprintf(text, sizeof(text), "%s within its budget of %.2f %s", name.c_str(), budget->second,
           unit);
  Check(text, count <= budget->second * (1 + kTolerance));
  if (count < budget->second * (1 - kTolerance)) printf("     record the lower figure\n");
}

int Report::Finish() const {
  printf("%d checks, %d failed\n", checks_, failures_);
  return failures_ == 0 && checks_ > 0 ? 0 : 1;
}

}  // namespace bench
