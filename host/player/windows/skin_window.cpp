#include "host/player/windows/skin_window.h"

#include <shellapi.h>
#include <windowsx.h>

#include <string>
#include <vector>

#include "host/player/windows/player_app.h"
#include "host/player/windows/window_group.h"

namespace velmora {
namespace {

void RegisterOnce(const wchar_t* name, WNDPROC procedure) {
  WNDCLASSW type = {};
  type.style = CS_DBLCLKS;
  type.lpfnWndProc = procedure;
  type.hInstance = GetModuleHandleW(nullptr);
  type.hIcon = LoadIconW(type.hInstance, MAKEINTRESOURCEW(100));
  type.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  type.lpszClassName = name;
  RegisterClassW(&type);
}

std::vector<std::wstring> DroppedPaths(HDROP drop) {
  std::vector<std::wstring> paths;
  const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
  for (UINT i = 0; i < count; ++i) {
    std::wstring path(DragQueryFileW(drop, i, nullptr, 0), L'\0');
    DragQueryFileW(drop, i, path.data(), static_cast<UINT>(path.size() + 1));
    paths.push_back(path);
  }
  return paths;
}

}  // namespace

bool SkinWindow::Create(const wchar_t* class_name, const wchar_t* title, HWND owner) {
  RegisterOnce(class_name, Procedure);
  // A bare popup is none of a window manager's business: it would stay above the program's dialogs
  // and on the screen when the main window is minimised.
  const DWORD style = WS_POPUP | WS_SYSMENU | (owner ? 0 : WS_MINIMIZEBOX);
  const DWORD extended = WS_EX_ACCEPTFILES | (owner ? 0 : WS_EX_APPWINDOW);
  CreateWindowExW(extended, class_name, title, style, 0, 0, 0, 0, owner, nullptr,
                  GetModuleHandleW(nullptr), this);
  UpdateSize();
  return window_ != nullptr;
}

void SkinWindow::Destroy() {
  if (!window_) return;
  tips_.Forget();
  SetWindowLongPtrW(window_, GWLP_USERDATA, 0);  // no more messages to an object that goes
  DestroyWindow(window_);
  window_ = nullptr;
}

void SkinWindow::Show(bool shown) {
  ShowWindow(window_, shown ? SW_SHOWNOACTIVATE : SW_HIDE);
  Refresh();
}

Rect SkinWindow::place() const {
  RECT r = {};
  GetWindowRect(window_, &r);
  return {r.left, r.top, r.right - r.left, r.bottom - r.top};
}

void SkinWindow::MoveTo(Point position) {
  SetWindowPos(window_, nullptr, position.x, position.y, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void SkinWindow::UpdateSize() {
  const Size size = CanvasSize();
  const int scale = app_.scale();
  SetWindowPos(window_, nullptr, 0, 0, size.width * scale, size.height * scale,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  InvalidateRect(window_, nullptr, FALSE);
  UpdateTips();
  Refresh();
}

void SkinWindow::UpdateTips() {
  if (window_) tips_.Show(window_, OwnTips(), app_.scale());
}

void SkinWindow::Refresh() {
  if (!visible() || IsIconic(window_)) return;
  if (!(canvas_.size() == CanvasSize())) canvas_ = Canvas(CanvasSize());
  Draw(&canvas_);
  const Rect changed = Difference(drawn_, canvas_.picture());
  if (changed.empty()) return;
  drawn_ = canvas_.picture();
  const int scale = app_.scale();
  const RECT area = {changed.x * scale, changed.y * scale, changed.right() * scale,
                     changed.bottom() * scale};
  InvalidateRect(window_, &area, FALSE);
}

void SkinWindow::Paint() {
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(window_, &paint);
  if (!drawn_.empty()) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = drawn_.width;
    info.bmiHeader.biHeight = -drawn_.height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    const int scale = app_.scale();
    SetStretchBltMode(dc, COLORONCOLOR);
    StretchDIBits(dc, 0, 0, drawn_.width * scale, drawn_.height * scale, 0, 0, drawn_.width,
                  drawn_.height, drawn_.pixels.data(), &info, DIB_RGB_COLORS, SRCCOPY);
  }
  EndPaint(window_, &paint);
}

Point SkinWindow::ToCanvas(LPARAM lparam) const {
  // Rounds down also left of and above the window.
  const int scale = app_.scale();
  const auto down = [scale](int v) { return v >= 0 ? v / scale : -((-v + scale - 1) / scale); };
  return {down(GET_X_LPARAM(lparam)), down(GET_Y_LPARAM(lparam))};
}

Point SkinWindow::ToScreen(LPARAM lparam) const {
  POINT point = {GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};
  ClientToScreen(window_, &point);
  return {point.x, point.y};
}

void SkinWindow::OnButtonDown(LPARAM lparam, bool twice) {
  const Point point = ToCanvas(lparam);
  SetCapture(window_);
  if (IsHandle(point) && !twice) {
    capture_ = Capture::kMove;
    app_.windows().BeginMove(this, ToScreen(lparam));
    return;
  }
  capture_ = Capture::kControl;
  if (twice) {
    OnDoubleClick(point);
  } else {
    OnPress(point);
  }
}

void SkinWindow::OnMouseMove(LPARAM lparam) {
  if (capture_ == Capture::kMove) app_.windows().Move(ToScreen(lparam));
  if (capture_ == Capture::kControl) OnDrag(ToCanvas(lparam));
}

void SkinWindow::OnButtonUp(Point point) {
  if (capture_ == Capture::kControl) OnDrag(point);  // a fast mouse has come farther than its moves
  const Capture capture = capture_;
  capture_ = Capture::kNone;
  ReleaseCapture();
  if (capture == Capture::kControl) OnRelease(point);
}

void SkinWindow::OnCaptureLost() {
  const Capture capture = capture_;
  capture_ = Capture::kNone;
  if (capture == Capture::kControl) OnCancel();
}

void SkinWindow::OnWheelTurned(int delta) {
  wheel_ += delta;
  const int notches = wheel_ / WHEEL_DELTA;
  wheel_ -= notches * WHEEL_DELTA;
  if (notches != 0) OnWheel(notches);
}

void SkinWindow::OnMenuAsked(LPARAM lparam) {
  POINT at = {GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};
  POINT inside = at;
  ScreenToClient(window_, &inside);
  if (at.x == -1 && at.y == -1) {  // by a key
    at = inside = {0, 0};
    ClientToScreen(window_, &at);
  }
  OnMenu({at.x, at.y}, ToCanvas(MAKELPARAM(inside.x, inside.y)));
}

void SkinWindow::OnMenu(Point screen, Point) {
  app_.ShowMenu(screen);
}

void SkinWindow::OnDrop(HDROP drop) {
  const std::vector<std::wstring> paths = DroppedPaths(drop);
  DragFinish(drop);
  OnFiles(paths);
}

void SkinWindow::OnFiles(const std::vector<std::wstring>& paths) {
  app_.OnDropped(paths, true);
}

bool SkinWindow::OnKey(int key) {
  if (key != VK_UP && key != VK_DOWN) return false;
  app_.Do(key == VK_UP ? kCommandVolumeUp : kCommandVolumeDown);
  return true;
}

LRESULT SkinWindow::OnOther(UINT message, WPARAM wparam, LPARAM lparam) {
  return DefWindowProcW(window_, message, wparam, lparam);
}

LRESULT SkinWindow::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
      Paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_LBUTTONDOWN:
      OnButtonDown(lparam, false);
      return 0;
    case WM_LBUTTONDBLCLK:
      OnButtonDown(lparam, true);
      return 0;
    case WM_MOUSEMOVE:
      if (wparam & MK_LBUTTON) OnMouseMove(lparam);
      return 0;
    case WM_LBUTTONUP:
      OnButtonUp(ToCanvas(lparam));
      return 0;
    case WM_CAPTURECHANGED:
      OnCaptureLost();
      return 0;
    case WM_MOUSEWHEEL:
      OnWheelTurned(GET_WHEEL_DELTA_WPARAM(wparam));
      return 0;
    case WM_SETCURSOR:
      // A click while a dialog keeps the user from this window.
      if (LOWORD(lparam) == static_cast<WORD>(HTERROR) && HIWORD(lparam) == WM_LBUTTONDOWN) {
        app_.windows().RaiseDialog();
      }
      break;
    case WM_CONTEXTMENU:
      OnMenuAsked(lparam);
      return 0;
    case WM_DROPFILES:
      OnDrop(reinterpret_cast<HDROP>(wparam));
      return 0;
    case WM_CLOSE:
      OnClose();
      return 0;
    case WM_SYSCHAR:
      return 0;  // shortcuts with Alt have been taken; no beep
    case WM_SYSCOMMAND:
      // There is no menu bar that F10 could open; Alt+Space opens the system's menu.
      if ((wparam & 0xFFF0) == SC_KEYMENU && lparam != ' ') return 0;
      break;
    case WM_KEYDOWN:
      if (OnKey(static_cast<int>(wparam))) return 0;
      break;
    case WM_ACTIVATE:
      active_ = LOWORD(wparam) != WA_INACTIVE;
      Refresh();
      break;
    case WM_SHOWWINDOW:
    case WM_SIZE:
      PostMessageW(window_, WM_APP, 0, 0);
      break;  // visible only after this
    case WM_APP:
      Refresh();
      return 0;
  }
  return OnOther(message, wparam, lparam);
}

LRESULT CALLBACK SkinWindow::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_NCCREATE) {
    auto* self = static_cast<SkinWindow*>(reinterpret_cast<CREATESTRUCTW*>(lparam)->lpCreateParams);
    self->window_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
  }
  auto* self = reinterpret_cast<SkinWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  return self ? self->OnMessage(message, wparam, lparam)
              : DefWindowProcW(window, message, wparam, lparam);
}

}  // namespace velmora
