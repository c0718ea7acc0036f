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
      : rounds_(Number(variable, usual)), seconds_(Number("KELVO_SECONDS", UINT64_MAX)) {}

  // Whether there is to be another round; the first one always is.
  bool Next() {
    // By the time that has passed: a time_t of 32 bits may not reach to a far end.
    const auto passed = static_cast<uint64_t>(difftime(time(nullptr), begin_));
    if (done_ == rounds_ || (done_ > 0 && passed > seconds_)) return false;
    ++done_;
    return true;
  }
  uint64_t done() const { return done_; }

 private:
  static uint64_t Number(const char* variable, uint64_t usual) {
    const char* const text = getenv(variable);
    return text ? strtoull(text, nullptr, 10) : usual;
  }

  uint64_t rounds_;
  uint64_t seconds_;
  time_t begin_ = time(nullptr);
  uint64_t done_ = 0;
};

}  // namespace kelvo::test
