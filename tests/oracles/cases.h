// What the comparisons share: which cases are tried, and the dice that make one. A case is its
// number, so that one that failed can be tried alone:
//   KELVO_ORACLE_CASES=1 KELVO_ORACLE_FIRST=4711
#pragma once

#include <gtest/gtest.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>

#include <string>

#include "tests/oracles/model_text.h"
#include "tests/support/long_run.h"

namespace kelvo::oracle {

class Dice {
 public:
  explicit Dice(uint64_t number) : state_(number * 0x9E3779B97F4A7C15u) {}

  uint32_t Roll(uint32_t sides) {  // 0 to sides - 1
    state_ += 0x9E3779B97F4A7C15u;
    uint64_t z = (state_ ^ (state_ >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return static_cast<uint32_t>((z ^ (z >> 31)) >> 32) % sides;
  }
  bool OneIn(uint32_t n) { return Roll(n) == 0; }
  template <class T, uint32_t kCount>
  const T& Of(const T (&choices)[kCount]) {
    return choices[Roll(kCount)];
  }
  // One of the words between the bars; several in a row, up to `most`.
  template <class Char, size_t kSize>
  std::basic_string<Char> Word(const Char (&words)[kSize]) {
    uint32_t bars = 0;
    for (const Char c : words) bars += c == '|';
    size_t at = 0;
    for (uint32_t left = Roll(bars + 1); left > 0; ++at) left -= words[at] == '|';
    size_t end = at;
    while (end + 1 < kSize && words[end] != '|') ++end;
    return std::basic_string<Char>(words + at, end - at);
  }
  template <size_t kSize>
  std::string Row(const char (&words)[kSize], uint32_t most) {
    std::string text;
    for (uint32_t left = Roll(most + 1); left > 0; --left) text += Word(words);
    return text;
  }

 private:
  uint64_t state_;
};

template <class Case>
void ForCases(uint64_t count, Case one) {
  const char* const start = getenv("KELVO_ORACLE_FIRST");
  const uint64_t first = start ? strtoull(start, nullptr, 10) : 0;
  test::LongRun run("KELVO_ORACLE_CASES", count);
  while (run.Next()) {
    const uint64_t number = first + run.done() - 1;
    Dice dice(number);
    one(dice);
    if (testing::Test::HasFailure()) {
      ADD_FAILURE() << "case " << number;
      return;
    }
  }
  EXPECT_GT(run.done(), 0u);
  printf("%llu cases\n", static_cast<unsigned long long>(run.done()));
}

}  // namespace kelvo::oracle
