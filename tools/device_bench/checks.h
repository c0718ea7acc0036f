// The runs that the program offers.
#pragma once

#include <stdint.h>

#include <string>
#include <vector>

#include "report.h"

namespace bench {

std::vector<uint8_t> ReadFileHere(const std::string& path);

// The chain itself, with the DLL made for that (tools/device/fixture).
void CheckProbe(Report& report, const std::string& dll);
// A fault of that DLL, by number: ends the run.
void CauseFault(const std::string& dll, uint32_t kind);
// The library without media: loading, unloading, features by number.
void CheckFeatures(Report& report, const std::string& dll);
// Opening, titles, playing and seeking through the decoding thread; memory that runs out.
void CheckVorbis(Report& report, const std::string& dll, const std::string& media);
// A file that is made to do harm: opened, sought in, played to its end, closed.
void CheckHostileVorbis(Report& report, const std::string& dll, const std::string& path);
// Equalizer and bass, against the same sources on this machine; instructions per stereo frame.
void CheckEffects(Report& report, const std::string& dll);
// Presets, skins and bookmarks on files of this machine.
void CheckStores(Report& report, const std::string& dll);
// Instructions per second of audio: the decoder alone, then the whole path.
void MeasureVorbis(Report& report, const std::string& dll, const std::string& raw_decoder,
                   const std::vector<std::string>& media);

// The processor's time for a second of audio: decoding each file, the effects, all together.
void MeasureCycles(Report& report, const std::string& dll, const std::vector<std::string>& media);

}  // namespace bench
