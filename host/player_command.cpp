// The player with its windows.
#include "host/command.h"
#include "host/player/windows/player_app.h"

namespace velmora {

int PlayerCommand(const Library& library, const Words& files) {
  PlayerApp app(library);
  return app.Run(files);
}

}  // namespace velmora
