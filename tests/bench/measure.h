// Two pieces of work compared in one run. The machine is shared and noisy: they take turns, and the
// fastest round of each counts.
#pragma once

#include <stdio.h>

#include <chrono>

namespace kelvo::bench {

template <class Work>
double Seconds(const Work& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Prints both and their ratio beside the goal.
template <class Ours, class Bare>
void Compare(const char* name, double goal, const Ours& ours, const Bare& bare, int rounds = 15) {
  double best_ours = 1e9;
  double best_bare = 1e9;
  for (int i = 0; i < rounds; ++i) {
    const double b = Seconds(bare);
    const double o = Seconds(ours);
    best_bare = b < best_bare ? b : best_bare;
    best_ours = o < best_ours ? o : best_ours;
  }
  const double ratio = best_ours / best_bare;
  printf("%-28s %8.2f ms, bare %8.2f ms: %.2f x (goal <= %.2f) %s\n", name, best_ours * 1e3,
         best_bare * 1e3, ratio, goal, ratio <= goal ? "ok" : "MISSED");
}

}  // namespace kelvo::bench
