// Drives the library's Ogg Vorbis plug-in as the host does.
#pragma once

#include <stdint.h>

#include <string>
#include <vector>

#include "host_output.h"
#include "host_reader.h"
#include "process.h"

namespace bench {

class VorbisPlayer {
 public:
  static constexpr uint32_t kWindow = 0x4711;  // notified at the end
  enum State : uint32_t { kStopped = 1, kPlaying = 2, kPaused = 3 };

  // Loads and attaches the library; it sees the files of `folder`.
  VorbisPlayer(const std::string& dll, const std::vector<uint8_t>& file, std::string folder);

  bool Open(const std::u16string& path);
  std::u16string Title();
  uint32_t Close() { return Slot(13, {11, 12}); }
  uint32_t Play() { return Slot(12); }
  uint32_t Stop() { return Slot(10); }
  uint32_t TogglePause() { return Slot(11); }
  uint32_t SeekMs(int32_t to) { return Slot(9, {static_cast<uint32_t>(to)}); }
  uint32_t LengthMs() { return Slot(3); }
  uint32_t PositionMs() { return Slot(4, {1, 2}); }
  uint32_t PlaybackState() { return Slot(6); }
  uint32_t Slot(int slot, std::vector<uint32_t> arguments = {}) {
    return process.CallSlot(plugin, slot, std::move(arguments));
  }

  // Until the decoding thread has ended; false when it takes hours of the device's time.
  bool PlayToEnd();
  bool RunUntilPlayed(uint32_t frames);
  // Messages posted at the end of playback since the last call.
  size_t TakeEndMessages();

  Process process;
  HostReader reader;
  HostOutput output;
  uint32_t plugin = 0;
  uint32_t text = 0;  // room for a text of 260 characters
};

}  // namespace bench
