// The player's session: whatever the file holds, what was understood is within its bounds and comes
// back from its own text.
#include <stddef.h>
#include <stdint.h>

#include "host/player/session.h"
#include "tests/fuzz/require.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace velmora;
  const Session session = ParseSession(std::string(reinterpret_cast<const char*>(data), size));
  kelvo::fuzz::Require(session.volume >= 0 && session.volume <= 100);
  kelvo::fuzz::Require(session.tracks.empty() || session.current < session.tracks.size());
  for (const uint8_t slider : session.equalizer.bands) kelvo::fuzz::Require(slider <= kLastSlider);
  const std::string text = PrintSession(session);
  kelvo::fuzz::Require(PrintSession(ParseSession(text)) == text);
  return 0;
}
