#include "vorbis_player.h"

#include "fail.h"

namespace bench {
namespace {

constexpr uint64_t kHours = uint64_t{4} * 3600 * 1000000;
constexpr uint32_t kEndOfPlayback = 0x0A08;
constexpr uint32_t kTextBytes = 260 * 2;
// The published fields of the plug-in.
constexpr uint32_t kOutputField = 8, kReaderField = 12;

}  // namespace

VorbisPlayer::VorbisPlayer(const std::string& dll, const std::vector<uint8_t>& file,
                           std::string folder)
    : process(std::move(folder)), reader(process, file), output(process) {
  text = process.heap.Take(kTextBytes);
  process.Load(dll);
  if (process.Attach() == 0) Fail("the library refuses to attach");
  plugin = process.CallExport("GetFeature", {3});
  if (plugin == 0) Fail("no Ogg Vorbis plug-in");
  process.machine.SetWord(plugin + kReaderField, reader.object());
  process.machine.SetWord(plugin + kOutputField, output.object());
  Slot(17, {kWindow});
}

bool VorbisPlayer::Open(const std::u16string& path) {
  process.machine.SetWide(text, path);
  return Slot(14, {text, 7}) != 0;
}

std::u16string VorbisPlayer::Title() {
  return Slot(1, {text}) != 0 ? process.machine.Wide(text) : std::u16string();
}

bool VorbisPlayer::PlayToEnd() {
  return process.threads.RunUntil([this] { return process.threads.running() == 0; }, kHours);
}

bool VorbisPlayer::RunUntilPlayed(uint32_t frames) {
  return process.threads.RunUntil([&] { return output.PlayedFrames() >= frames; }, kHours);
}

size_t VorbisPlayer::TakeEndMessages() {
  size_t count = 0;
  for (const Process::Message& message : process.messages) {
    count += message.window == kWindow && message.message == kEndOfPlayback &&
             message.wparam == 0 && message.lparam == 0;
  }
  process.messages.clear();
  return count;
}

}  // namespace bench
