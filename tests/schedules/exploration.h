// Tries every schedule of two threads with up to so many switches that neither had to make.
// KELVO_SCHEDULE_SWITCHES makes it more.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstdio>
#include <string>

#include "tests/schedules/scheduler.h"

namespace kelvo::test {

class Exploration : public ::testing::Test {
 protected:
  // False once one has failed.
  bool Explore(void (*host)(), int switches) {
    Plan plan;
    return Explore(plan, host, switches);
  }
  static int Switches(int fewest) {
    const char* more = getenv("KELVO_SCHEDULE_SWITCHES");
    return more ? fewest + atoi(more) : fewest;
  }
  // What was run, for one that has failed.
  virtual std::string Scene() const = 0;
  void TearDown() override { std::printf("%ld schedules\n", runs_); }

 private:
  // All plans that begin with `plan`.
  bool Explore(Plan& plan, void (*host)(), int switches) {
    const Outcome outcome = RunScheduled(plan, host);
    ++runs_;
    if (!outcome.failure.empty()) {
      std::string text;
      for (size_t point : plan) text += " " + std::to_string(point);
      ADD_FAILURE() << "switches at" << text << ": " << outcome.failure << "\n" << Scene();
      return false;
    }
    if (switches == 0) return true;
    plan.push_back(plan.empty() ? 0 : plan.back() + 1);
    for (; plan.back() < outcome.points; ++plan.back()) {
      if (!Explore(plan, host, switches - 1)) return false;
    }
    plan.pop_back();
    return true;
  }

  long runs_ = 0;
};

}  // namespace kelvo::test
