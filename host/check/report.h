// What `velmora check` prints: a line for each sentence of the contract.
#pragma once

#include <string>

namespace velmora::check {

// How long a check waits for what must come; less than the minute that Guard gives.
constexpr int kWaitMs = 50000;

class Report {
 public:
  // What is being checked: said when the library ends the process or never returns.
  void Begin(const char* subject);
  // A sentence of the contract, and whether it holds. Printed at once.
  void Says(const std::string& sentence, bool holds);
  // A sentence, or several, that cannot be tried here.
  void LeavesOut(const std::string& what);
  // Prints the count. 0 when every sentence holds.
  int End() const;

  // From now on a crash, and a minute in which nothing is printed, is a sentence that fails; it
  // ends the process with code 3.
  void Guard();

 private:
  void Print(const char* mark, const std::string& text);

  int held_ = 0, failed_ = 0, left_out_ = 0;
};

}  // namespace velmora::check
