#include "tools/selftest/checks.h"

#include <initializer_list>

#include "kelvo/effects_processor.h"
#include "tools/kelvotool/effects_check.h"
#include "tools/selftest/playing.h"
#include "tools/selftest/tone.h"

namespace kelvo::selftest {
namespace {

constexpr size_t kPathCapacity = 260;

uint32_t FreeMemory() noexcept {
  MEMORYSTATUS memory = {};
  memory.dwLength = sizeof(memory);
  GlobalMemoryStatus(&memory);
  return static_cast<uint32_t>(memory.dwAvailPhys);
}

bool Copy(wchar_t* dst, const wchar_t* first, const wchar_t* second) noexcept {
  size_t at = 0;
  for (const wchar_t* part : {first, second}) {
    for (; *part != 0; ++part) {
      if (at == kPathCapacity - 1) return false;
      dst[at++] = *part;
    }
  }
  dst[at] = 0;
  return true;
}

bool WriteTone(const wchar_t* path) noexcept {
  const HANDLE file =
      CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  DWORD written = 0;
  const bool whole = WriteFile(file, kTone, static_cast<DWORD>(kToneBytes), &written, nullptr) &&
                     written == kToneBytes;
  CloseHandle(file);
  return whole;
}

}  // namespace

void DescribeSystem(Report& report) noexcept {
  OSVERSIONINFOW version = {};
  version.dwOSVersionInfoSize = sizeof(version);
  GetVersionExW(&version);
  SYSTEM_INFO system = {};
  GetSystemInfo(&system);
  MEMORYSTATUS memory = {};
  memory.dwLength = sizeof(memory);
  GlobalMemoryStatus(&memory);
  const auto number = [](auto value) { return static_cast<uint32_t>(value); };
  report.Line("system ", number(version.dwMajorVersion), ".", number(version.dwMinorVersion),
              ", build ", number(version.dwBuildNumber), ", platform ",
              number(version.dwPlatformId));
  report.Line("processor type ", number(system.dwProcessorType), ", architecture ",
              number(system.wProcessorArchitecture), ", level ", number(system.wProcessorLevel),
              ", revision ", number(system.wProcessorRevision), ", pages of ",
              number(system.dwPageSize));
  report.Line("memory ", number(memory.dwTotalPhys / 1024), " KB, free ",
              number(memory.dwAvailPhys / 1024), " KB");
}

void CheckFeatures(GetFeatureFunction get_feature, Report& report) noexcept {
  const auto* version = static_cast<const wchar_t*>(get_feature(kFeatureVersionText));
  report.Check(version && version[0] != 0, "version text: ", version ? version : L"none");
  for (const FeatureId id : {kFeatureCatalog, kFeatureOggVorbis, kFeatureEqualizerPresets,
                             kFeatureSkinReader, kFeatureBookmarks, kFeatureEffects}) {
    const void* const feature = get_feature(id);
    report.Check(feature && feature == get_feature(id), "feature ", static_cast<uint32_t>(id));
  }
  report.Check(!get_feature(2) && !get_feature(22), "no feature 2, no feature 22");
  // Without the system's player control the library is right not to offer it.
  report.Line("        feature 6, Windows Media: ",
              get_feature(kFeatureWma) ? "offered" : "not offered");
}

void CheckEffectsAndTime(GetFeatureFunction get_feature, Report& report) noexcept {
  auto* effects = static_cast<EffectsProcessor*>(get_feature(kFeatureEffects));
  if (!effects) return;
  size_t first_wrong = 0;
  const size_t right = tool::CheckEffects(*effects, &first_wrong);
  report.Check(right == tool::kEffectsStepCount,
               "equalizer and bass: ", static_cast<uint32_t>(right), " of ",
               static_cast<uint32_t>(tool::kEffectsStepCount), " blocks as recorded");
  constexpr int32_t kBands[10] = {10, 3, 14, 20, 5, 9, 14, 12, 7, 2};
  constexpr int32_t kBlockBytes = 4096;
  constexpr int kBlocks = 86;  // two seconds of 44.1 kHz, stereo
  static int16_t block[kBlockBytes / 2];
  uint32_t random = 1;
  for (int16_t& sample : block) {
    random = random * 1664525u + 1013904223u;
    sample = static_cast<int16_t>(random >> 18);
  }
  effects->EnableEqualizer(1);
  effects->SetEqualizer(13, kBands);
  effects->SetBassMode(4);
  const DWORD start = GetTickCount();
  for (int i = 0; i < kBlocks; ++i) {
    int16_t* data = block;
    effects->ProcessEqualizer(&data, kBlockBytes);
    effects->ProcessBass(&data, kBlockBytes);
  }
  report.Line("        time for 2 seconds of equalizer and bass: ",
              static_cast<uint32_t>(GetTickCount() - start), " ms");
}

void CheckDecodingAndTime(GetFeatureFunction get_feature, Report& report) noexcept {
  auto* plugin = static_cast<OggVorbisInput*>(get_feature(kFeatureOggVorbis));
  if (!plugin) return;
  constexpr int kTimes = 3;
  uint32_t as_recorded = 0, milliseconds = 0, free_memory = 0;
  Played played = {};
  for (int i = 0; i < kTimes; ++i) {
    played = PlayTone(*plugin);
    milliseconds += played.milliseconds;
    as_recorded += played.ended && played.bytes == kTonePcmBytes && played.hash == kTonePcmHash;
    if (i == 0) free_memory = FreeMemory();  // what is taken once has been taken
  }
  report.Check(as_recorded == kTimes, "decoding: ", as_recorded, " of ",
               static_cast<uint32_t>(kTimes), " times as recorded");
  if (as_recorded != kTimes) {
    report.Add("        the last time ");
    report.Add(played.opened ? played.bytes : 0);
    report.Add(" bytes, sum ");
    report.AddHex(played.hash);
    report.Line(played.ended ? "" : ", without an end");
  }
  report.Line("        time for ", kTimes * kToneMs / 1000,
              " seconds of 44.1 kHz stereo: ", milliseconds, " ms");
  const uint32_t now = FreeMemory();
  report.Line("        memory that is not free any more: ",
              now < free_memory ? (free_memory - now) / 1024 : 0, " KB");
}

void CheckFiles(GetFeatureFunction get_feature, const wchar_t* folder, Report& report) noexcept {
  auto* plugin = static_cast<OggVorbisInput*>(get_feature(kFeatureOggVorbis));
  static wchar_t path[kPathCapacity], title[kMaxText];
  if (!plugin || !Copy(path, folder, L"Kelvo self-test.ogg")) return;
  report.Check(WriteTone(path), "a file is written beside this program");
  MediaInfo info = {};
  uint32_t length = 0, ignored = 0;
  const bool is_read =
      plugin->GetFileInfo(path, title, nullptr, &info, &length, &ignored, nullptr, nullptr) != 0;
  report.Check(is_read && length == kToneMs && info.sample_rate == 44100 && info.stereo != 0,
               "and read by the library: ", length, " ms, ", info.sample_rate, " Hz, \"", title,
               "\"");
  report.Check(DeleteFileW(path) != 0, "and deleted");
}

}  // namespace kelvo::selftest
