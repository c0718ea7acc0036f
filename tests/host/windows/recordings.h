// What is played from now on goes into WAV files, a new one for each file that is played.
#pragma once

#include <string>
#include <vector>

#include "tests/pocketpc/wav_bytes.h"
#include "tests/support/installation_folder.h"
#include "tests/support/user.h"

namespace velmora::test {

class Recordings {
 public:
  // `name` is another one for each that is made.
  Recordings(const kelvo::test::InstallationFolder& folder, const std::wstring& name, bool fast)
      : base_(folder.Path(name)) {
    kelvo::UseSink((base_ + L".wav").c_str(), fast);
  }
  // Samples in the n-th so far, from 1; 0 before it is there.
  size_t Count(int n) const {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(Path(n).c_str(), GetFileExInfoStandard, &data)) return 0;
    return data.nFileSizeLow > kHeaderBytes ? (data.nFileSizeLow - kHeaderBytes) / 2 : 0;
  }
  bool WaitForSamples(int n, size_t count) const {
    return kelvo::test::WaitFor([&] { return Count(n) >= count; });
  }
  // Longer than any change takes to be heard.
  bool WaitForMore(int n) const { return WaitForSamples(n, Count(n) + 10 * 8192); }
  std::vector<int16_t> Read(int n) const {
    const kelvo::WavBytes wav = kelvo::ReadWav(Path(n));
    EXPECT_TRUE(wav.ok) << "recording " << n;
    return wav.samples;
  }

 private:
  static constexpr DWORD kHeaderBytes = 44;
  std::wstring Path(int n) const {
    return base_ + (n > 1 ? L"-" + std::to_wstring(n) : L"") + L".wav";
  }
  const std::wstring base_;
};

}  // namespace velmora::test
