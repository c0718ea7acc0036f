// One player at a time for each installation: a second command hands its files to the one that
// runs, and ends.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace velmora {

// What a command wants of the player.
struct Request {
  std::wstring device;              // the folder for the catalog; empty: any
  std::vector<std::wstring> files;  // full paths; none: the window is to come to the front
};

class OneInstance {
 public:
  // `place` is what no two players may share, a path.
  explicit OneInstance(const std::wstring& place);
  ~OneInstance();
  OneInstance(const OneInstance&) = delete;
  OneInstance& operator=(const OneInstance&) = delete;

  enum class Answer {
    kFirst,        // no player runs: this one is it, until the end of this object
    kTaken,        // the running player has taken the request
    kOtherDevice,  // so it has, but the catalog's folder stays the one that it was started with
    kNone,         // the running player does not answer
  };
  Answer Ask(const Request& request);

  // Marks the window of the first player; it receives the requests as WM_COPYDATA.
  static void Mark(HWND window, const std::wstring& place);
  // Of that message; false: it is something else.
  static bool Read(const COPYDATASTRUCT& data, Request* request);
  // The message's result.
  static LRESULT Result(bool other_device) { return other_device ? 2 : 1; }

 private:
  const std::wstring name_;
  const HANDLE mutex_;
  bool first_ = false;
};

}  // namespace velmora
