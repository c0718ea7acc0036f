// The host's side of playback.
#include "input/vorbis/ogg_vorbis_plugin.h"

namespace kelvo {

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
  StopThread();
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
  if (!thread_.held()) return;
  stop_request_ = 1;
  if (output_) output_->Reset();
  thread_.Join();
}

int32_t OggVorbisPlugin::Stop() noexcept {
  StopThread();
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

}  // namespace kelvo
