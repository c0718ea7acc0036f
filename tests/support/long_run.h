// A run as long as one wants: so many rounds, or as many as KELVO_SECONDS hold.
#pragma once

#include <stdint.h>
#include <stdlib.h>
#include <time.h>

namespace kelvo::test {

class LongRun {
 public:
  // `variable` of the environment says how many rounds, if it is there.
  LongRun(const char* variable, uint64_t usual)
      : rounds_(Number(variable, usual)), until_(time(nullptr) + Limit()) {}

  // Whether there is to be another round.
  bool Next() {
    if (done_ == rounds_ || time(nullptr) > until_) return false;
    ++done_;
    return true;
  }
  uint64_t done() const { return done_; }

 private:
  static uint64_t Number(const char* variable, uint64_t usual) {
    const char* const text = getenv(variable);
    return text ? strtoull(text, nullptr, 10) : usual;
  }
  static time_t Limit() { return static_cast<time_t>(Number("KELVO_SECONDS", UINT32_MAX >> 2)); }

  uint64_t rounds_;
  time_t until_;
  uint64_t done_ = 0;
};

}  // namespace kelvo::test
