#include "pocketpc/wmpcmn/audio_queue.h"

namespace kelvo {

bool AudioQueue::Open(uint32_t rate) noexcept {
  if (device_ && rate == rate_) return true;
  Close();
  WAVEFORMATEX format = {};
  format.wFormatTag = WAVE_FORMAT_PCM;
  format.nChannels = 2;
  format.nSamplesPerSec = rate;
  format.nAvgBytesPerSec = rate * 4;
  format.nBlockAlign = 4;
  format.wBitsPerSample = 16;
  const auto event = reinterpret_cast<DWORD_PTR>(changed_.get());
  if (!event ||
      waveOutOpen(&device_, WAVE_MAPPER, &format, event, 0, CALLBACK_EVENT) != MMSYSERR_NOERROR) {
    device_ = nullptr;
    return false;
  }
  rate_ = rate;
  return true;
}

void AudioQueue::Close() noexcept {
  if (!device_) return;
  Reset();
  waveOutClose(device_);
  device_ = nullptr;
}

AudioQueue::Block* AudioQueue::FreeBlock() noexcept {
  return queued_ < kBlocks ? &blocks_[(first_ + queued_) % kBlocks] : nullptr;
}

bool AudioQueue::Play(Block* block) noexcept {
  block->header = {};
  block->header.lpData = reinterpret_cast<char*>(block->samples.data());
  block->header.dwBufferLength = static_cast<DWORD>(block->samples.size() * sizeof(int16_t));
  if (waveOutPrepareHeader(device_, &block->header, sizeof(WAVEHDR)) != MMSYSERR_NOERROR) {
    return false;
  }
  if (waveOutWrite(device_, &block->header, sizeof(WAVEHDR)) != MMSYSERR_NOERROR) {
    waveOutUnprepareHeader(device_, &block->header, sizeof(WAVEHDR));
    return false;
  }
  ++queued_;
  return true;
}

const AudioQueue::Block* AudioQueue::NextDone() noexcept {
  if (queued_ == 0) return nullptr;
  Block* const block = &blocks_[first_];
  // Set by the device's thread.
  if (!(*static_cast<volatile DWORD*>(&block->header.dwFlags) & WHDR_DONE)) return nullptr;
  waveOutUnprepareHeader(device_, &block->header, sizeof(WAVEHDR));
  first_ = (first_ + 1) % kBlocks;
  --queued_;
  return block;
}

void AudioQueue::Reset() noexcept {
  if (!device_) return;
  waveOutReset(device_);
  while (NextDone()) {
  }
}

}  // namespace kelvo
