// Runs the device's DLL in an emulator of its processor.
//
//   device_bench probe PROBE.dll
//   device_bench fault PROBE.dll NUMBER
//   device_bench features Kelvo.dll
//   device_bench effects Kelvo.dll BUDGETS
//   device_bench stores Kelvo.dll
//   device_bench vorbis Kelvo.dll MEDIA.ogg...
//   device_bench hostile Kelvo.dll FILE.ogg...
//   device_bench measure Kelvo.dll raw_decoder.dll BUDGETS MEDIA.ogg...
//   device_bench cycles Kelvo.dll BUDGETS MEDIA.ogg...
#include <stdio.h>

#include "checks.h"

int main(int argc, char** argv) {
  setvbuf(stdout, nullptr, _IOLBF, 0);
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  bench::Report report;
  if (arguments.size() == 2 && arguments[0] == "probe") {
    bench::CheckProbe(report, arguments[1]);
  } else if (arguments.size() == 3 && arguments[0] == "fault") {
    bench::CauseFault(arguments[1], static_cast<uint32_t>(std::stoul(arguments[2])));
    return 0;
  } else if (arguments.size() == 2 && arguments[0] == "features") {
    bench::CheckFeatures(report, arguments[1]);
  } else if (arguments.size() == 3 && arguments[0] == "effects") {
    report.ReadBudgets(arguments[2]);
    bench::CheckEffects(report, arguments[1]);
  } else if (arguments.size() == 2 && arguments[0] == "stores") {
    bench::CheckStores(report, arguments[1]);
  } else if (arguments.size() >= 3 && arguments[0] == "vorbis") {
    for (size_t i = 2; i < arguments.size(); ++i) {
      bench::CheckVorbis(report, arguments[1], arguments[i]);
    }
  } else if (arguments.size() >= 3 && arguments[0] == "hostile") {
    for (size_t i = 2; i < arguments.size(); ++i) {
      bench::CheckHostileVorbis(report, arguments[1], arguments[i]);
    }
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
