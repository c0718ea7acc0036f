#include "host_output.h"

#include <algorithm>

#include "fail.h"

namespace bench {
namespace {

// The header: data, length in bytes, valid bytes, and what the system keeps for itself.
constexpr uint32_t kHeaderBytes = 32;
constexpr uint32_t kSecond = 1000000;

}  // namespace

HostOutput::HostOutput(Process& process) : process_(process) {
  const auto nothing = [](auto action) {
    return [action](Process&) {
      action();
      return 0u;
    };
  };
  const std::map<int, Process::Import> slots = {
      {4, [this](Process&) { return Open(); }},
      {5, nothing([this] { Close(); })},
      {6, [this](Process&) { return GetBuffer(); }},
      {8,
       [this](Process& p) {
         Write(p.Argument(1));
         return 0u;
       }},
      {9,
       [this](Process& p) {
         Pause(p.Argument(1) != 0);
         return 0u;
       }},
      {11, nothing([this] { Reset(); })},
      {12, [this](Process&) { return PlayedFrames(); }},
      {13,
       [this](Process&) {
         Play();
         return queue_.empty() ? 1u : 0u;
       }},
  };
  object_ = process.MakeObject("AudioOutput", slots, 14);
  process.threads.AddAlarm([this] { return queue_.empty() || !running_ ? kNever : HeadEnd(); });
}

uint32_t HostOutput::Open() {
  if (open_) Fail("AudioOutput: opened twice");
  if (fail_open_) {
    fail_open_ = false;
    return 0;
  }
  const uint32_t count = process_.Argument(1);
  buffer_bytes_ = process_.Argument(2);
  channels_ = process_.Argument(3);
  sample_rate_ = process_.Argument(4);
  if (process_.Argument(5) != 16) Fail("AudioOutput: %u bits", process_.Argument(5));
  for (uint32_t i = 0; i < count; ++i) {
    const uint32_t header = process_.heap.TakeZeroed(kHeaderBytes);
    process_.machine.SetWord(header, process_.heap.Take(buffer_bytes_));
    process_.machine.SetWord(header + 4, buffer_bytes_);
    headers_.push_back(header);
  }
  free_ = headers_;
  open_ = true;
  paused_ = false;
  pcm_.clear();
  Reset();
  return 1;
}

void HostOutput::Close() {
  for (const uint32_t header : headers_) {
    process_.heap.Give(process_.machine.Word(header));
    process_.heap.Give(header);
  }
  headers_.clear();
  free_.clear();
  queue_.clear();
  open_ = running_ = false;
}

uint32_t HostOutput::GetBuffer() {
  process_.threads.Wait([this](uint32_t* result) {
    Play();
    if (free_.empty()) return false;
    *result = free_.front();
    free_.erase(free_.begin());
    return true;
  });
  return 0;
}

void HostOutput::Write(uint32_t header) {
  Play();
  if (std::find(headers_.begin(), headers_.end(), header) == headers_.end()) {
    Fail("AudioOutput: %#x is none of its buffers", header);
  }
  const uint32_t valid = process_.machine.Word(header + 8);
  if (valid > buffer_bytes_ || valid != process_.machine.Word(header + 4)) {
    Fail("AudioOutput: %u valid bytes of %u", valid, process_.machine.Word(header + 4));
  }
  if (on_write_) on_write_(process_.machine.Word(header), valid);
  const uint8_t* data = process_.machine.At(process_.machine.Word(header), valid);
  pcm_.insert(pcm_.end(), data, data + valid);
  if (running_ && queue_.empty()) {
    underruns_ += starved_;
    head_began_ = process_.threads.now();
  }
  starved_ = false;
  queue_.push_back({header, valid / (2 * channels_)});
  if (queue_.size() == headers_.size() && !running_ && !paused_) Pause(false);
}

void HostOutput::Pause(bool pause) {
  Play();
  if (!pause && !running_) head_began_ = process_.threads.now();
  running_ = !pause;
  paused_ = pause;
}

void HostOutput::Reset() {
  for (const Queued& queued : queue_) free_.push_back(queued.header);
  queue_.clear();
  pcm_.clear();
  running_ = starved_ = false;
  played_ = 0;
}

uint64_t HostOutput::HeadEnd() const {
  return head_began_ + uint64_t{queue_.front().frames} * kSecond / sample_rate_;
}

void HostOutput::Play() {
  while (running_ && !queue_.empty() && HeadEnd() <= process_.threads.now()) {
    head_began_ = HeadEnd();
    played_ += queue_.front().frames;
    free_.push_back(queue_.front().header);
    queue_.pop_front();
    starved_ = queue_.empty();
  }
}

uint32_t HostOutput::PlayedFrames() {
  Play();
  return played_;
}

}  // namespace bench
