// The runs that the program offers.
#pragma once

#include <stdint.h>

#include <string>
#include <vector>

#include "report.h"

namespace bench {

std::vector<uint8_t> ReadFileHere(const std::string& path);

// Equalizer and bass, against the same sources on this machine; instructions per stereo frame.
void CheckEffects(Report& report, const std::string& dll);
// Instructions per second of audio: the decoder alone, then the whole path.
void MeasureVorbis(Report& report, const std::string& dll, const std::string& raw_decoder,
                   const std::vector<std::string>& media);

// The processor's time for a second of audio: decoding each file, the effects, all together.
void MeasureCycles(Report& report, const std::string& dll, const std::vector<std::string>& media);

}  // namespace bench
