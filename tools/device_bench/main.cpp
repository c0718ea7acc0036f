// Counts what the device's DLL costs, in an emulator of its processor.
//
//   device_bench effects Kelvo.dll BUDGETS
//   device_bench measure Kelvo.dll raw_decoder.dll BUDGETS MEDIA.ogg...
//   device_bench cycles Kelvo.dll BUDGETS MEDIA.ogg...
#include <stdio.h>

#include "checks.h"

int main(int argc, char** argv) {
  setvbuf(stdout, nullptr, _IOLBF, 0);
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  bench::Report report;
  if (arguments.size() == 3 && arguments[0] == "effects") {
    report.ReadBudgets(arguments[2]);
    bench::CheckEffects(report, arguments[1]);
  } else if (arguments.size() >= 5 && arguments[0] == "measure") {
    report.ReadBudgets(arguments[3]);
    bench::MeasureVorbis(report, arguments[1], arguments[2],
                         {arguments.begin() + 4, arguments.end()});
  } else if (arguments.size() >= 4 && arguments[0] == "cycles") {
    report.ReadBudgets(arguments[2]);
    bench::MeasureCycles(report, arguments[1], {arguments.begin() + 3, arguments.end()});
  } else {
    fputs("usage: see the head of main.cpp\n", stderr);
    return 2;
  }
  return report.Finish();
}
