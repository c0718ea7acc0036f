// The user whose screen is photographed: the windows' captions are in any language, and what looks
// active must be.
#pragma once

#include "tests/support/user.h"

namespace screenshots {

// Waits end the program with a message when what they wait for does not come.
class User : public kelvo::test::User {
 public:
  User();

  // All that is open, on the screen.
  std::vector<RECT> Windows() const;

  // Something after which another dialog takes input: one more, or the one below.
  void OpenByCommand(int id) const;
  void OpenBox(int command) const;  // a message box
  void CloseBy(int id) const;       // a button of the dialog
  void ShowPage(int page) const;

  void OpenMenu(int button) const;  // of the menu bar
  void OpenContextMenu(HWND control, POINT at) const;
  // The pointer goes where it lights up nothing, nothing stays lit, and all is painted.
  void StandStill() const;
  void TapItem(HWND list, int item) const { TapList(list, item, LVHT_ONITEMLABEL); }

 private:
  void Activate() const;
};

}  // namespace screenshots
