#pragma once

#include <windows.h>

#include <stdint.h>
#include <wmsdkidl.h>

#include "base/memory/array.h"
#include "base/windows/com_ptr.h"

namespace kelvo {

// Decodes the first audio stream of a Windows Media file with the system's synchronous reader. The
// samples are always 16-bit interleaved stereo, as the device's component hands them out: mono is
// doubled, of more channels the first two are kept. Times count 100 ns units. One thread.
class AsfDecoder {
 public:
  // On failure nothing is open.
  HRESULT Open(const wchar_t* path) noexcept;
  void Close() noexcept;

  uint32_t rate() const noexcept { return rate_; }
  uint64_t duration() const noexcept { return duration_; }

  // The next block begins there.
  HRESULT Seek(uint64_t time) noexcept;
  // S_OK: `samples` holds the next block, which ends at *end_time. S_FALSE: the stream is over.
  HRESULT Read(Array<int16_t>* samples, uint64_t* end_time) noexcept;

 private:
  HRESULT SelectAudio() noexcept;
  HRESULT UseFormat(IWMOutputMediaProps* properties) noexcept;
  HRESULT ReadDuration() noexcept;
  HRESULT ReadNext(Array<int16_t>* samples, uint64_t* time) noexcept;
  uint64_t BlockTime(uint64_t told) const noexcept;
  uint64_t DurationOf(const Array<int16_t>& samples) const noexcept;
  HRESULT ToStereo(const uint8_t* data, size_t bytes, Array<int16_t>* samples) const noexcept;

  ComPtr<IWMSyncReader> reader_;
  WORD stream_ = 0;
  uint32_t channels_ = 0;
  uint32_t rate_ = 0;
  uint64_t duration_ = 0;
  uint64_t wanted_ = 0;  // what comes before is decoded and dropped
};

}  // namespace kelvo
