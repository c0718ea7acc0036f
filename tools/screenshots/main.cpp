// screenshots FOLDER DEVICE [LANGUAGE]: opens the player and every dialog of the library, and
// writes a picture of each into FOLDER. LANGUAGE: four hexadecimal digits. scripts/screenshots.sh.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "tools/screenshots/picture.h"
#include "tools/screenshots/shot.h"
#include "tools/screenshots/studio.h"
#include "tools/screenshots/user.h"

namespace screenshots {
namespace {

const Group* const kGroups[] = {&kCatalogGroup,         &kSaveGroup,
                                &kBookmarkGroup,        &kPresetNameGroup,
                                &kPresetOverwriteGroup, &kPlayerGroup};

bool Same(const std::vector<RECT>& a, const std::vector<RECT>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const RECT& x, const RECT& y) { return EqualRect(&x, &y); });
}

// Of all windows, once they stay where they are.
Picture PhotographAll(const User& user) {
  for (;;) {
    const std::vector<RECT> places = user.Windows();
    Picture picture = Photograph(places);
    if (Same(places, user.Windows())) return picture;
  }
}

// False when a picture cannot be written.
bool Take(const Group& group, User& user, const std::wstring& folder) {
  user.Wait("a dialog", [&] { return user.Dialog() != nullptr; });
  bool written = true;
  for (size_t i = 0; i < group.count; ++i) {
    const Shot& shot = group.shots[i];
    shot.pose(user);
    user.StandStill();
    const std::wstring path = folder + L"\\" + shot.name + L".png";
    if (!WritePng(path, PhotographAll(user))) {
      std::fprintf(stderr, "screenshots: cannot write %ls\n", path.c_str());
      written = false;
    }
    if (shot.leave) shot.leave(user);
  }
  if (group.close) group.close(user);
  return written;
}

int Run(const std::wstring& folder, const wchar_t* device, DWORD language) {
  Studio session(device, language);
  if (!session.ready()) {
    std::fprintf(stderr, "screenshots: %ls\n", session.why());
    return 1;
  }
  bool written = true;
  User user;
  for (const Group* group : kGroups) {
    std::thread hands([&] { written = Take(*group, user, folder) && written; });
    group->open(session);
    hands.join();
  }
  return written ? 0 : 1;
}

}  // namespace
}  // namespace screenshots

int wmain(int count, wchar_t** words) {
  if (count < 3 || count > 4) {
    std::fprintf(stderr, "usage: screenshots FOLDER DEVICE [LANGUAGE]\n");
    return 2;
  }
  const DWORD language = count == 4 ? wcstoul(words[3], nullptr, 16) : 0;
  return screenshots::Run(words[1], words[2], language);
}
