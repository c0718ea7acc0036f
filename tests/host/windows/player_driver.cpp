#include "tests/host/windows/player_driver.h"

#include <shlobj.h>

#include "host/library.h"
#include "host/player/windows/player_app.h"

namespace velmora::test {
namespace {

// Of this process only: other tests may show a player at the same time.
HWND FindOwn(const wchar_t* class_name) {
  HWND window = nullptr;
  while ((window = FindWindowExW(nullptr, window, class_name, nullptr)) != nullptr) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId()) return window;
  }
  return nullptr;
}

}  // namespace

PlayerDriver::PlayerDriver(const std::vector<std::wstring>& files, const std::wstring& session) {
  SetEnvironmentVariableW(L"KELVO_AUDIO_SINK", L"silence");
  thread_ = std::thread([files, session] {
    const Library library;
    PlayerApp app(library, {files, L"", session});
    app.Run();
  });
  Until([&] {
    main_ = FindOwn(L"VelmoraMain");
    equalizer_ = FindOwn(L"VelmoraEqualizer");
    playlist_ = FindOwn(L"VelmoraPlaylist");
    return main_ && IsWindowVisible(main_) && equalizer_ && playlist_;
  });
  SendMessageW(main_, WM_NULL, 0, 0);  // it is through with what it does at the start
}

void PlayerDriver::Leave() {
  if (!thread_.joinable()) return;
  Command(kCommandStop);
  PostMessageW(main_, WM_CLOSE, 0, 0);
  thread_.join();
}

HWND PlayerDriver::Find(const wchar_t* class_name) {
  const HWND window = FindOwn(class_name);
  return window && IsWindowVisible(window) ? window : nullptr;
}

int PlayerDriver::Scale() const {
  const RECT place = Place(main_);
  return (place.right - place.left) / 275;
}

LPARAM PlayerDriver::PointOf(Point at) const {
  const int scale = Scale();
  return MAKELPARAM(at.x * scale, at.y * scale);
}

void PlayerDriver::Press(HWND window, Point at) {
  GUITHREADINFO thread = {};
  thread.cbSize = sizeof thread;
  // A display without a window manager tells of the first focus late, and that ends a press.
  do {
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, PointOf(at));
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &thread);
  } while (thread.hwndCapture != window);
}

void PlayerDriver::MoveTo(HWND window, Point at) {
  SendMessageW(window, WM_MOUSEMOVE, MK_LBUTTON, PointOf(at));
}

void PlayerDriver::Release(HWND window, Point at) {
  SendMessageW(window, WM_LBUTTONUP, 0, PointOf(at));
}

void PlayerDriver::Click(HWND window, Point at) {
  Press(window, at);
  Release(window, at);
}

void PlayerDriver::DoubleClick(HWND window, Point at) {
  Click(window, at);
  SendMessageW(window, WM_LBUTTONDBLCLK, MK_LBUTTON, PointOf(at));
  Release(window, at);
}

void PlayerDriver::Drag(HWND window, Point from, Point to) {
  Press(window, from);
  MoveTo(window, to);
  Release(window, to);
}

void PlayerDriver::Wheel(HWND window, int notches) {
  SendMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, notches * WHEEL_DELTA), 0);
}

void PlayerDriver::Key(HWND window, int key) {
  PostMessageW(window, WM_KEYDOWN, static_cast<WPARAM>(key), 1);
  PostMessageW(window, WM_KEYUP, static_cast<WPARAM>(key), 1);
}

void PlayerDriver::Command(int command) {
  SendMessageW(main_, WM_COMMAND, static_cast<WPARAM>(command), 0);
}

void PlayerDriver::Drop(HWND window, const std::vector<std::wstring>& paths) {
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
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = picture.width;
  info.bmiHeader.biHeight = -picture.height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
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

void PlayerDriver::Until(const std::function<bool()>& true_now) {
  while (!true_now()) Sleep(10);
}

bool PlayerDriver::Soon(const std::function<bool()>& true_now) {
  for (int i = 0; i < 300; ++i) {
    if (true_now()) return true;
    Sleep(10);
  }
  return false;
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
