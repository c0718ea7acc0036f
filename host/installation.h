#pragma once

namespace velmora {

// Registers this program's folder as the installation, where the library keeps its files. An
// installed player's installer does this.
void RegisterInstallation();

}  // namespace velmora
