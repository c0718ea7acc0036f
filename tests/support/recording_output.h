// An AudioOutput that keeps what is played. It consumes instantly, or holds everything until told
// to go on, so that a test decides where the decoding thread stands.
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <vector>

#include "kelvo/audio_output.h"

namespace kelvo::test {

class RecordingOutput final : public AudioOutput {
 public:
  // In hold mode written buffers stay queued.
  void SetHold(bool hold) {
    std::lock_guard<std::mutex> guard(mutex_);
    hold_ = hold;
    if (!hold_) ConsumeQueue();
    changed_.notify_all();
  }
  // Waits until all buffers are queued or handed out and the caller waits for one.
  void WaitUntilFull() {
    std::unique_lock<std::mutex> guard(mutex_);
    changed_.wait(guard, [&] { return waiting_ > 0; });
  }

  std::vector<char> pcm() const { return Guarded(&RecordingOutput::pcm_); }
  std::string calls() const { return Guarded(&RecordingOutput::calls_); }
  size_t writes() const { return Guarded(&RecordingOutput::writes_); }
  std::string format() const { return Guarded(&RecordingOutput::format_); }
  std::string last_words() const { return Guarded(&RecordingOutput::last_words_); }
  void ClearCalls() {
    std::lock_guard<std::mutex> guard(mutex_);
    calls_.clear();
  }

  int32_t Open(uint32_t buffer_count, uint32_t buffer_bytes, uint32_t channels,
               uint32_t sample_rate, uint32_t bits_per_sample) noexcept override {
    std::lock_guard<std::mutex> guard(mutex_);
    calls_ += "open ";
    format_ = std::to_string(buffer_count) + "x" + std::to_string(buffer_bytes) + " " +
              std::to_string(channels) + "ch " + std::to_string(sample_rate) + "Hz " +
              std::to_string(bits_per_sample) + "bit";
    channels_ = channels;
    buffer_bytes_ = buffer_bytes;
    slots_.assign(buffer_count, Slot());
    for (Slot& slot : slots_) {
      slot.data.resize(buffer_bytes);
      slot.header.data = slot.data.data();
    }
    queue_.clear();
    pcm_.clear();
    writes_ = 0;
    played_ = 0;
    paused_ = false;
    return 1;
  }
  void Close() noexcept override {
    std::lock_guard<std::mutex> guard(mutex_);
    calls_ += "close ";
    queue_.clear();
  }
  OutputBuffer* GetBuffer() noexcept override {
    std::unique_lock<std::mutex> guard(mutex_);
    for (;;) {
      for (Slot& slot : slots_) {
        if (slot.use != Use::kFree) continue;
        slot.use = Use::kHandedOut;
        return &slot.header;
      }
      ++waiting_;
      changed_.notify_all();
      changed_.wait(guard);
      --waiting_;
    }
  }
  int32_t Write(OutputBuffer* buffer, uint32_t unused_bytes) noexcept override {
    std::lock_guard<std::mutex> guard(mutex_);
    if (buffer->valid_bytes + unused_bytes != buffer_bytes_ ||
        buffer->valid_bytes != buffer->length_bytes) {
      calls_ += "BAD-WRITE ";
    }
    ++writes_;
    SlotOf(buffer)->use = Use::kQueued;
    queue_.push_back(buffer);
    if (!hold_ && !paused_) ConsumeQueue();
    return 1;
  }
  void Pause(uint32_t pause) noexcept override {
    std::lock_guard<std::mutex> guard(mutex_);
    calls_ += pause ? "pause " : "run ";
    paused_ = pause != 0;
    if (!hold_ && !paused_) ConsumeQueue();
    changed_.notify_all();
  }
  void Reset() noexcept override {
    std::lock_guard<std::mutex> guard(mutex_);
    calls_ += "reset ";
    for (OutputBuffer* buffer : queue_) SlotOf(buffer)->use = Use::kFree;
    queue_.clear();
    pcm_.clear();
    played_ = 0;
    // Whoever waits is released even when every buffer is handed out.
    if (waiting_ > 0) {
      for (Slot& slot : slots_) slot.use = Use::kFree;
    }
    changed_.notify_all();
  }
  uint32_t PlayedSamples(HostWord a, HostWord b) noexcept override {
    std::lock_guard<std::mutex> guard(mutex_);
    last_words_ = std::to_string(a) + "," + std::to_string(b);
    return played_;
  }
  int32_t Drained() noexcept override {
    std::lock_guard<std::mutex> guard(mutex_);
    return queue_.empty();
  }

 private:
  enum class Use { kFree, kHandedOut, kQueued };
  struct Slot {
    OutputBuffer header = {};
    std::vector<char> data;
    Use use = Use::kFree;
  };

  template <class T>
  T Guarded(T RecordingOutput::*field) const {
    std::lock_guard<std::mutex> guard(mutex_);
    return this->*field;
  }
  Slot* SlotOf(OutputBuffer* buffer) {
    for (Slot& slot : slots_) {
      if (&slot.header == buffer) return &slot;
    }
    return nullptr;
  }
  void ConsumeQueue() {
    for (OutputBuffer* buffer : queue_) {
      pcm_.insert(pcm_.end(), buffer->data, buffer->data + buffer->valid_bytes);
      played_ += buffer->valid_bytes / (2 * channels_);
      SlotOf(buffer)->use = Use::kFree;
    }
    queue_.clear();
  }

  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<Slot> slots_;
  std::vector<OutputBuffer*> queue_;
  std::vector<char> pcm_;
  size_t writes_ = 0;  // since Open
  std::string calls_;
  std::string format_;
  std::string last_words_;
  uint32_t channels_ = 1;
  uint32_t buffer_bytes_ = 0;
  uint32_t played_ = 0;
  int waiting_ = 0;
  bool hold_ = false;
  bool paused_ = false;
};

}  // namespace kelvo::test
