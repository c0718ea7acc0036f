#pragma once

#include <windows.h>

#include <ole2.h>

namespace kelvo {

class PlayerControl;

// The control's own interface. It has far more methods than anybody here calls, so it is no C++
// interface but a table, filled at the positions that input/wma/player_control.h names.
struct PlayerMethods {
  explicit PlayerMethods(PlayerControl* owner) noexcept;

  void* const* table;  // first, as in every COM interface
  PlayerControl* control;
};

}  // namespace kelvo
