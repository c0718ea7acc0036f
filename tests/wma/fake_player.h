// A player control of the test's own, made in place of the component's while it lives: the
// container takes it from this program.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include <string>

#include "base/windows/com_ptr.h"
#include "base/windows/player_control.h"

namespace kelvo {

enum class Fault { kNone, kNotMade, kNoPlayer, kNoEvents, kRefusesSinks };

class FakePlayer {
 public:
  FakePlayer();
  ~FakePlayer();

  // What goes wrong.
  Fault fault = Fault::kNone;
  int refused_setting = -1;
  HRESULT result = S_OK;  // of everything but settings

  double seconds = 0;  // position and duration
  std::string log;     // "30=0 ", "open song.wma ", "seek 1.500 ", "play ", ...
  ComPtr<IUnknown> sink;

  // What the plug-in gets to see.
  static void* control();
  static void* connection_point();

  std::string TakeLog() { return std::exchange(log, {}); }
  HRESULT Fire(DISPID event, DISPPARAMS* parameters);
};

}  // namespace kelvo
