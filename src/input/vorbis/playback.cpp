// Playback: what the host asks for on its thread, and the decoding thread, which fills buffer after
// buffer of the host's output with PCM, straight from the decoder, until the file ends, an error,
// or a stop.
#include "base/sync/thread.h"
#include "input/vorbis/ogg_vorbis_plugin.h"
#include "kelvo/messages.h"

namespace kelvo {
namespace {

constexpr uint32_t kBufferCount = 8;
constexpr uint32_t kBitsPerSample = 16;
constexpr uint32_t kDrainPollMs = 10;

// About a tenth of a second of stereo.
uint32_t BufferBytesFor(uint32_t sample_rate) noexcept {
  if (sample_rate > 22050) return 16384;
  return sample_rate > 11025 ? 8192 : 4096;
}

}  // namespace

// The host's side.

int32_t OggVorbisPlugin::Play() noexcept {
  {
    LockGuard guard(lock_);
    if (!stream_ || !output_) return 0;
    // Looked at once: the decoding thread may stop by itself at any moment.
    switch (GetState()) {
      case kPaused:
        TogglePause();
        return 1;
      case kStopped:
        break;
      default:
        return 0;
    }
  }
  // The last thread may be about to take the lock, so its end is awaited without it.
  if (thread_.held()) StopThread();
  LockGuard guard(lock_);
  return StartThread();
}

// The lock is held.
bool OggVorbisPlugin::StartThread() noexcept {
  // Without the event nobody would tell that the thread has started.
  if (!ready_.valid()) return false;
  ready_.Reset();
  thread_done_ = 0;
  return thread_.Start(ThreadBody, this, thread_priority_) && thread_.WaitForEventOrEnd(ready_);
}

void OggVorbisPlugin::StopThread() noexcept {
  stop_request_ = 1;
  if (output_) output_->Reset();
  thread_.Join();
}

int32_t OggVorbisPlugin::Stop() noexcept {
  if (!thread_.joined()) StopThread();  // once even if there never was one
  seek_pending_ = 0;
  run_output_ = 0;
  stop_request_ = 0;
  return 0;
}

int32_t OggVorbisPlugin::TogglePause() noexcept {
  LockGuard guard(lock_);
  if (!stream_ || !output_) return 0;
  switch (GetState()) {
    case kPlaying:
      SetState(kPaused);
      output_->Pause(1);
      run_output_ = 0;
      break;
    case kPaused:
      output_->Pause(0);
      run_output_ = 1;
      SetState(kPlaying);
      break;
    default:
      break;
  }
  return 0;
}

int32_t OggVorbisPlugin::SeekMs(int32_t milliseconds) noexcept {
  LockGuard guard(lock_);
  if (!stream_) return 0;
  if (milliseconds < 0) milliseconds = 0;
  if (milliseconds >= GetLengthMs()) return 0;
  const int64_t frame = static_cast<int64_t>(sample_rate_) * milliseconds / 1000;
  if (!SeekVorbis(stream_.get(), frame)) return 0;
  seek_pending_ = 1;
  seek_base_ = static_cast<uint32_t>(VorbisPosition(stream_.get()));
  if (output_) output_->Reset();
  return 1;
}

int32_t OggVorbisPlugin::GetPositionMs(HostWord a, HostWord b) noexcept {
  if (!stream_ || !output_ || sample_rate_ == 0) return 0;
  const double frames = static_cast<double>(seek_base_) + output_->PlayedSamples(a, b);
  return SaturatedMs(frames * 1000.0 / sample_rate_);
}

// The decoding thread.

void OggVorbisPlugin::ThreadBody(void* plugin) noexcept {
  OggVorbisPlugin* self = static_cast<OggVorbisPlugin*>(plugin);
  self->RunDecoding();
  self->thread_done_ = 1;
}

void OggVorbisPlugin::RunDecoding() noexcept {
  if (!StartOutput()) {
    Finish(false);
    return;
  }
  Step step;
  do {
    if (stop_request_) {
      Finish(false);
      return;
    }
    step = DecodeStep();
  } while (step == Step::kGoOn);
  Finish(step == Step::kEnd);
  PostToWindow(notify_window_, kMessageEndOfPlayback, 0, 0);
}

bool OggVorbisPlugin::StartOutput() noexcept {
  buffer_bytes_ = BufferBytesFor(sample_rate_);
  if (!output_->Open(kBufferCount, buffer_bytes_, channels_, sample_rate_, kBitsPerSample)) {
    return false;
  }
  run_output_ = 1;
  stop_request_ = 0;
  SetState(kPlaying);
  ready_.Set();
  return true;
}

OggVorbisPlugin::Step OggVorbisPlugin::DecodeStep() noexcept {
  if (!current_ || free_bytes_ < kLeastReadBytes) {
    if (current_) HandOverBuffer();
    current_ = output_->GetBuffer();
    free_bytes_ = buffer_bytes_;
    if (seek_pending_) return Step::kGoOn;
  }
  VorbisRead result;
  {
    LockGuard guard(lock_);
    if (seek_pending_) {
      RestartAfterSeek();
      return Step::kGoOn;
    }
    uint32_t count;
    result = ReadVorbis(stream_.get(), current_->data + (buffer_bytes_ - free_bytes_), free_bytes_,
                        &count);
    free_bytes_ -= count;
  }
  if (result == kReadEnd) return Step::kEnd;
  return result < 0 ? Step::kError : Step::kGoOn;
}

void OggVorbisPlugin::HandOverBuffer() noexcept {
  const uint32_t filled = buffer_bytes_ - free_bytes_;
  current_->length_bytes = filled;
  current_->valid_bytes = filled;
  output_->Write(current_, free_bytes_);
  current_ = nullptr;
}

void OggVorbisPlugin::RestartAfterSeek() noexcept {
  if (current_) free_bytes_ = buffer_bytes_;
  if (GetState() == kPlaying) run_output_ = 1;
  output_->Reset();
  if (run_output_) output_->Pause(0);
  seek_pending_ = 0;
}

// False when a seek came: the output then stays open and the state as it is.
bool OggVorbisPlugin::DrainOutput() noexcept {
  if (current_) HandOverBuffer();
  while (!output_->Drained()) {
    if (run_output_ && GetState() == kPlaying) {
      output_->Pause(0);
      run_output_ = 0;
    }
    SleepMs(kDrainPollMs);
    if (seek_pending_) return false;
    if (stop_request_) break;
  }
  return true;
}

void OggVorbisPlugin::Finish(bool drain) noexcept {
  if (drain && !DrainOutput()) return;
  current_ = nullptr;
  free_bytes_ = 0;
  run_output_ = 0;
  stop_request_ = 0;
  seek_pending_ = 0;
  seek_base_ = 0;
  output_->Close();
  ready_.Set();
  // A pause or resume that still sees the thread playing comes wholly before this.
  LockGuard guard(lock_);
  SetState(kStopped);
}

}  // namespace kelvo
