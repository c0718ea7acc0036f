#include "tests/host/windows/player_driver.h"

#include <shlobj.h>
#include <string.h>

namespace velmora::test {
namespace {

using kelvo::test::User;

void Complain(const std::string& what) {
  ADD_FAILURE() << what;
}

}  // namespace

PlayerDriver::PlayerDriver(const PlayerOptions& options) {
  thread_ = std::thread([this, options] {
    User user(&Complain);
    user_ = &user;
    PlayerApp(TheLibrary(), options).Run();
  });
  EXPECT_TRUE(WaitFor([this] {
    return user_.load() && (main_ = user().Find(nullptr, L"VelmoraMain")) != nullptr;
  }));
  // They are there before the main one is seen; other tests may show a player at the same time.
  const auto of_this_player = [this](const wchar_t* kind) {
    HWND window = nullptr;
    do {
      window = FindWindowExW(nullptr, window, kind, nullptr);
    } while (window && GetWindow(window, GW_OWNER) != main_);
    return window;
  };
  equalizer_ = of_this_player(L"VelmoraEqualizer");
  playlist_ = of_this_player(L"VelmoraPlaylist");
  SendMessageW(main_, WM_NULL, 0, 0);  // it is through with what it does at the start
}

bool PlayerDriver::WaitForSong(const std::string& song) const {
  return user().Wait(song, [&] { return Title().rfind(song, 0) == 0; });
}

bool PlayerDriver::WaitUntilStopped() const {
  return user().Wait("the end of the music", [&] { return Title() == "Velmora"; });
}

void PlayerDriver::Leave() {
  if (!thread_.joinable()) return;
  Command(kCommandStop);
  PostMessageW(main_, WM_CLOSE, 0, 0);
  thread_.join();
}

void PlayerDriver::Quit() {
  const Point close = {268, 7};
  Press(main_, close);
  // Posted, as from the mouse: what is sent does not wake the player's loop, which has to end.
  PostMessageW(main_, WM_LBUTTONUP, 0, MAKELPARAM(close.x * Scale(), close.y * Scale()));
  thread_.join();
}

int PlayerDriver::Scale() const {
  const RECT place = Place(main_);
  return (place.right - place.left) / 275;
}

void PlayerDriver::Send(HWND window, UINT message, WPARAM wparam, Point at) const {
  const int scale = Scale();
  SendMessageW(window, message, wparam, MAKELPARAM(at.x * scale, at.y * scale));
}

void PlayerDriver::Press(HWND window, Point at) const {
  GUITHREADINFO thread = {};
  thread.cbSize = sizeof thread;
  // A display without a window manager tells of the first focus late, and that ends a press.
  do {
    Send(window, WM_LBUTTONDOWN, MK_LBUTTON, at);
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &thread);
  } while (thread.hwndCapture != window);
}

void PlayerDriver::DoubleClick(HWND window, Point at) const {
  Click(window, at);
  Send(window, WM_LBUTTONDBLCLK, MK_LBUTTON, at);
  Release(window, at);
}

void PlayerDriver::Drag(HWND window, Point from, Point to) const {
  Press(window, from);
  if (!(from == to)) MoveTo(window, to);
  Release(window, to);
}

void PlayerDriver::Wheel(HWND window, int notches) const {
  SendMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, notches * WHEEL_DELTA), 0);
}

void PlayerDriver::Command(int command) const {
  SendMessageW(main_, WM_COMMAND, static_cast<WPARAM>(command), 0);
}

void PlayerDriver::Start(int command) const {
  PostMessageW(main_, WM_COMMAND, static_cast<WPARAM>(command), 0);
}

void PlayerDriver::Drop(HWND window, const std::vector<std::wstring>& paths) const {
  std::wstring names;
  for (const std::wstring& path : paths) names += path + L'\0';
  names += L'\0';
  const size_t bytes = names.size() * sizeof(wchar_t);
  const HGLOBAL memory = GlobalAlloc(GHND, sizeof(DROPFILES) + bytes);
  auto* drop = static_cast<DROPFILES*>(GlobalLock(memory));
  drop->pFiles = sizeof(DROPFILES);
  drop->fWide = TRUE;
  memcpy(drop + 1, names.data(), bytes);
  GlobalUnlock(memory);
  SendMessageW(window, WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
}

Bitmap PlayerDriver::Picture(HWND window) const {
  SendMessageW(window, WM_NULL, 0, 0);
  RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW);
  RECT client;
  GetClientRect(window, &client);
  const int scale = Scale();
  Bitmap picture(client.right / scale, client.bottom / scale);
  BITMAPINFO info = {};
  info.bmiHeader = {sizeof info.bmiHeader, picture.width, -picture.height, 1, 32, 0, 0, 0, 0, 0, 0};
  const HDC dc = GetDC(window);
  const HDC memory = CreateCompatibleDC(dc);
  void* bits = nullptr;
  const HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  const HGDIOBJ before = SelectObject(memory, bitmap);
  SetStretchBltMode(memory, COLORONCOLOR);
  StretchBlt(memory, 0, 0, picture.width, picture.height, dc, 0, 0, client.right, client.bottom,
             SRCCOPY);
  GdiFlush();
  const auto* pixels = static_cast<const Colour*>(bits);
  for (size_t i = 0; i < picture.pixels.size(); ++i) picture.pixels[i] = pixels[i] & 0xFFFFFF;
  SelectObject(memory, before);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(window, dc);
  return picture;
}

bool Shows(const Bitmap& picture, Rect place, const Bitmap& image, Point from) {
  for (int y = 0; y < place.height; ++y) {
    for (int x = 0; x < place.width; ++x) {
      if (picture.At(place.x + x, place.y + y) != image.At(from.x + x, from.y + y)) return false;
    }
  }
  return true;
}

RECT Place(HWND window) {
  RECT place = {};
  GetWindowRect(window, &place);
  return place;
}

}  // namespace velmora::test
