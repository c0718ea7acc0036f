#include "player.h"

#include <string.h>

#include <algorithm>

#include "report.h"

namespace bench {
namespace {

constexpr uint32_t kVorbisFeature = 3;
// The published fields of the plug-in, and its operations.
constexpr uint32_t kOutputField = 8, kReaderField = 12;
constexpr uint32_t kPlay = 12, kOpen = 14;
// A buffer's header: data, length in bytes, valid bytes, and what the system keeps for itself.
constexpr uint32_t kHeaderBytes = 32;

}  // namespace

Player::Player(Library& library, std::vector<uint8_t> file)
    : library_(library), file_(std::move(file)), plugin_(library.GetFeature(kVorbisFeature)) {
  library.machine.SetWord(plugin_ + kReaderField, MakeReader());
  library.machine.SetWord(plugin_ + kOutputField, MakeOutput());
}

uint32_t Player::MakeReader() {
  const auto yes = [](Machine&) { return 1u; };
  return library_.MakeObject("MediaReader",
                             {{1, [this](Machine& m) { return Seek(m); }},
                              {2, [this](Machine& m) { return Read(m); }},
                              {3, yes},
                              {4, yes},
                              {5, yes}},
                             6);
}

uint32_t Player::MakeOutput() {
  const auto yes = [](Machine&) { return 1u; };
  return library_.MakeObject("AudioOutput",
                             {{4, [this](Machine& m) { return OpenOutput(m); }},
                              {5, yes},
                              {6, [this](Machine&) { return header_; }},
                              {8, [this](Machine& m) { return Write(m); }},
                              {9, yes},
                              {11, yes},
                              {12, yes},
                              {13, yes}},
                             14);
}

// The 64-bit offset in two words right behind the object, then the origin, as the device's
// compilers pass them; the answer in r0 and r1.
uint32_t Player::Seek(Machine& m) {
  int64_t target = static_cast<int64_t>(uint64_t{m.Argument(2)} << 32 | m.Argument(1));
  const uint32_t origin = m.Argument(3);
  if (origin == 1) target += position_;
  if (origin == 2) target += static_cast<int64_t>(file_.size());
  if (target < 0 || target > static_cast<int64_t>(file_.size())) {
    target = INT64_MAX;
  } else {
    position_ = target;
  }
  m.SetRegister(UC_ARM_REG_R1, static_cast<uint32_t>(target >> 32));
  return static_cast<uint32_t>(target);
}

uint32_t Player::Read(Machine& m) {
  const uint32_t left = static_cast<uint32_t>(file_.size() - static_cast<size_t>(position_));
  const uint32_t bytes = std::min(m.Argument(2), left);
  memcpy(m.At(m.Argument(1), bytes), file_.data() + position_, bytes);
  position_ += bytes;
  m.SetWord(m.Argument(3), bytes);
  return 1;
}

uint32_t Player::OpenOutput(Machine& m) {
  const uint32_t bytes = m.Argument(2);
  channels_ = m.Argument(3);
  rate_ = m.Argument(4);
  header_ = m.Allocate(kHeaderBytes);
  m.SetWord(header_, m.Allocate(bytes));
  m.SetWord(header_ + 4, bytes);
  return 1;
}

uint32_t Player::Write(Machine& m) {
  const uint32_t valid = m.Word(header_ + 8);
  pcm_bytes_ += valid;
  if (on_block) on_block(m.Word(header_), valid);
  return 1;
}

void Player::Open() {
  const uint32_t path = library_.machine.Allocate(4);
  library_.machine.SetWord(path, 'x');
  if (library_.CallSlot(plugin_, kOpen, {path, 7}) == 0) Fail("the file cannot be opened");
}

void Player::Play() {
  if (library_.CallSlot(plugin_, kPlay) == 0 || pcm_bytes_ == 0) Fail("the file is not played");
}

}  // namespace bench
