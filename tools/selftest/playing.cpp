#include "tools/selftest/playing.h"

#include <string.h>
#include <windows.h>

#include "tools/selftest/tone.h"

namespace kelvo::selftest {
namespace {

class ToneReader final : public MediaReader {
 public:
#ifdef KELVO_CE_ARM
  int64_t SeekWords(uint32_t low, uint32_t high, uint32_t origin) noexcept override {
    return Move(static_cast<int64_t>(static_cast<uint64_t>(high) << 32 | low), origin);
  }
#else
  int64_t Seek(int64_t offset, uint32_t origin) noexcept override {
    return Move(offset, origin);
  }
#endif
  int32_t Read(void* destination, uint32_t bytes, uint32_t* bytes_read) noexcept override {
    const size_t left = kToneBytes - at_;
    *bytes_read = static_cast<uint32_t>(bytes < left ? bytes : left);
    memcpy(destination, kTone + at_, *bytes_read);
    at_ += *bytes_read;
    return 1;
  }
  int32_t Close() noexcept override {
    return 1;
  }
  int32_t Open(const wchar_t*, uint32_t) noexcept override {
    at_ = 0;
    return 1;
  }
  int32_t Release(HostWord, HostWord) noexcept override {
    return 1;
  }

 private:
  int64_t Move(int64_t offset, uint32_t origin) noexcept {
    if (origin == kSeekCurrent) offset += static_cast<int64_t>(at_);
    if (origin == kSeekEnd) offset += static_cast<int64_t>(kToneBytes);
    if (offset < 0 || offset > static_cast<int64_t>(kToneBytes)) return kSeekFailed;
    at_ = static_cast<size_t>(offset);
    return offset;
  }

  size_t at_ = 0;
};

// The device's stack has no room for it.
char g_block[16384];

// One buffer that is free at once, and a sum over what goes through it.
class Sum final : public AudioOutput {
 public:
  int32_t Open(uint32_t, uint32_t buffer_bytes, uint32_t, uint32_t, uint32_t) noexcept override {
    if (buffer_bytes > sizeof(g_block)) return 0;
    buffer_.data = g_block;
    buffer_.length_bytes = buffer_bytes;
    return 1;
  }
  void Close() noexcept override {}
  OutputBuffer* GetBuffer() noexcept override { return &buffer_; }
  int32_t Write(OutputBuffer* buffer, uint32_t) noexcept override {
    for (uint32_t i = 0; i < buffer->valid_bytes; ++i) {
      hash_ = (hash_ ^ static_cast<uint8_t>(buffer->data[i])) * 16777619u;
    }
    bytes_ += buffer->valid_bytes;
    return 1;
  }
  void Pause(uint32_t) noexcept override {}
  void Reset() noexcept override {}
  uint32_t PlayedSamples(HostWord, HostWord) noexcept override { return 0; }
  int32_t Drained() noexcept override { return 1; }

  uint32_t bytes() const noexcept { return bytes_; }
  uint32_t hash() const noexcept { return hash_; }

 private:
  uint32_t bytes_ = 0;
  uint32_t hash_ = 2166136261u;
  OutputBuffer buffer_ = {};
};

}  // namespace

Played PlayTone(OggVorbisInput& plugin) noexcept {
  constexpr DWORD kPatienceMs = 60000, kStepMs = 5;
  ToneReader reader;
  Sum sum;
  Played played = {};
  plugin.SetReader(&reader);
  plugin.SetOutput(&sum);
  const DWORD start = GetTickCount();
  played.opened = plugin.Open(L"tone.ogg", 0) != 0;
  if (played.opened && plugin.Play() != 0) {
    while (plugin.GetState() != kStopped && GetTickCount() - start < kPatienceMs) Sleep(kStepMs);
    played.ended = plugin.GetState() == kStopped;
  }
  played.milliseconds = GetTickCount() - start;
  plugin.Stop();
  plugin.Close(0, 0);
  plugin.SetOutput(nullptr);
  plugin.SetReader(nullptr);
  played.bytes = sum.bytes();
  played.hash = sum.hash();
  return played;
}

}  // namespace kelvo::selftest
