#include "host_output.h"

#include "fail.h"

namespace bench {
namespace {

// The header: data, length in bytes, valid bytes, and what the system keeps for itself.
constexpr uint32_t kHeaderBytes = 32;

}  // namespace

HostOutput::HostOutput(Process& process) : process_(process) {
  const auto yes = [](Process&) { return 1u; };
  object_ =
      process.MakeObject("AudioOutput",
                         {{4,
                           [this](Process& p) {
                             Open(p);
                             return 1u;
                           }},
                          {5, yes},
                          {6, [this](Process&) { return headers_[next_++ % headers_.size()]; }},
                          {8,
                           [this](Process& p) {
                             Write(p.Argument(1));
                             return 1u;
                           }},
                          {9, yes},
                          {11,
                           [this](Process&) {
                             pcm_.clear();
                             return 1u;
                           }},
                          {12, [this](Process&) { return PlayedFrames(); }},
                          {13, yes}},
                         14);
}

void HostOutput::Open(Process& p) {
  const uint32_t count = p.Argument(1);
  buffer_bytes_ = p.Argument(2);
  channels_ = p.Argument(3);
  headers_.clear();
  for (uint32_t i = 0; i < count; ++i) {
    headers_.push_back(p.heap.TakeZeroed(kHeaderBytes));
    p.machine.SetWord(headers_.back(), p.heap.Take(buffer_bytes_));
    p.machine.SetWord(headers_.back() + 4, buffer_bytes_);
  }
  pcm_.clear();
}

void HostOutput::Write(uint32_t header) {
  const uint32_t samples = process_.machine.Word(header), valid = process_.machine.Word(header + 8);
  if (valid > buffer_bytes_) Fail("AudioOutput: %u valid bytes of %u", valid, buffer_bytes_);
  if (on_write_) on_write_(samples, valid);
  const uint8_t* data = process_.machine.At(samples, valid);
  pcm_.insert(pcm_.end(), data, data + valid);
}

uint32_t HostOutput::PlayedFrames() const {
  return static_cast<uint32_t>(pcm_.size()) / (2 * channels_);
}

}  // namespace bench
