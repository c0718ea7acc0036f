#include "input/wma/control_host.h"

#include "input/wma/player_control.h"

namespace kelvo {
namespace {

constexpr wchar_t kWindowClass[] = L"VLWMAPlayer";
constexpr wchar_t kContainerModule[] = L"atlce300.dll";
constexpr wchar_t kContainerClass[] = L"AtlAxWin";
constexpr uintptr_t kContainerId = 1333;

constexpr IID kConnectionPointContainer = {
    0xB196B284, 0xBAB4, 0x101A, {0xB6, 0x9C, 0x00, 0xAA, 0x00, 0x34, 0x1D, 0x07}};

struct Setting {
  PlayerMethod method;
  int32_t value;
};
// The control is of use only when it took all of these, in this order.
constexpr Setting kNeeded[] = {{kPlayerPutSetting30, 0},
                               {kPlayerPutSetting36, 0},
                               {kPlayerPutSetting26, 0},
                               {kPlayerPutSetting38, 0}};
// Then these, whatever it answers; number 34 once more at the end.
constexpr Setting kWished[] = {{kPlayerPutSetting96, 1}, {kPlayerPutSetting28, 0},
                               {kPlayerPutSetting32, 0}, {kPlayerPutSetting34, 0},
                               {kPlayerPutSetting24, 0}, {kPlayerPutSetting34, 0}};

ControlHost* g_host = nullptr;  // the one whose window exists, or is being made

template <class Function>
Function FindFunction(HMODULE module, const char* name) noexcept {
  if (!module) return nullptr;
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

}  // namespace

bool ControlHost::StartUp(HINSTANCE instance) noexcept {
  if (g_host || FAILED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) return false;
  instance_ = instance;
  // Loaded by name: a machine without it still gets the rest of the library.
  containers_.Reset(LoadLibraryW(kContainerModule));
  using Init = BOOL(WINAPI*)();
  if (const auto init = FindFunction<Init>(containers_.get(), "AtlAxWinInit")) init();
  g_host = this;
  if (!MakeWindow()) {
    g_host = nullptr;
    LeaveApartment();
    return false;
  }
  started_ = true;
  return true;
}

bool ControlHost::MakeWindow() noexcept {
  WNDCLASSW window_class = {};
  window_class.style = CS_HREDRAW | CS_VREDRAW;
  window_class.lpfnWndProc = &Procedure;
  window_class.hInstance = instance_;
  window_class.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
  window_class.lpszClassName = kWindowClass;
  RegisterClassW(&window_class);
  window_ =
      CreateWindowExW(0, kWindowClass, L"", 0, 0, 0, 1, 1, nullptr, nullptr, instance_, nullptr);
  if (!window_) UnregisterClassW(kWindowClass, instance_);
  return window_ != nullptr;
}

void ControlHost::Close() noexcept {
  OnDestroy();
  // From here on the window is nobody's: its end shall not end the host's message loop.
  g_host = nullptr;
  if (window_ && !DestroyWindow(window_)) {
    // Another thread's window stays (hosts must unload where they loaded), and its container too.
    static_cast<void>(containers_.Release());
  }
  window_ = nullptr;
  UnregisterClassW(kWindowClass, instance_);
}

void ControlHost::Abandon() noexcept {
  g_host = nullptr;
  window_ = nullptr;
  available_ = 0;
  static_cast<void>(connection_.Detach());
  static_cast<void>(control_.Detach());
  static_cast<void>(containers_.Release());
}

void ControlHost::LeaveApartment() noexcept {
  started_ = false;
  containers_.Reset();
  CoUninitialize();
}

LRESULT CALLBACK ControlHost::Procedure(HWND window, UINT message, WPARAM wparam,
                                        LPARAM lparam) noexcept {
  if (g_host && message == WM_CREATE) {
    g_host->OnCreate(window);
    return 0;
  }
  if (g_host && message == WM_DESTROY) {
    g_host->OnDestroy();
    g_host->window_ = nullptr;
    PostQuitMessage(0);
    return 0;
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

void ControlHost::OnCreate(HWND window) noexcept {
  using GetControl = HRESULT(WINAPI*)(HWND, IUnknown**);
  const auto get_control = FindFunction<GetControl>(containers_.get(), "AtlAxGetControl");
  const HWND container =
      CreateWindowExW(0, kContainerClass, kPlayerClassText, WS_CHILD, 0, 0, 1, 1, window,
                      reinterpret_cast<HMENU>(kContainerId), instance_, nullptr);
  if (!container || !get_control) return;
  ComPtr<IUnknown> hosted;
  if (FAILED(get_control(container, hosted.Receive())) || !hosted) return;
  if (FAILED(control_.Query(hosted.get(), kPlayerInterface))) return;
  Connect(hosted.get());
  available_ = Configure();
}

// Without a connection the host is never told of an end, but everything else works.
void ControlHost::Connect(IUnknown* hosted) noexcept {
  ComPtr<IConnectionPointContainer> container;
  if (FAILED(container.Query(hosted, kConnectionPointContainer))) return;
  if (FAILED(container->FindConnectionPoint(kPlayerEventInterface, connection_.Receive())) ||
      !connection_) {
    return;
  }
  if (FAILED(connection_->Advise(this, &cookie_))) connection_.Reset();
}

bool ControlHost::Configure() noexcept {
  for (const Setting& setting : kNeeded) {
    if (FAILED(PlayerPutSetting(control(), setting.method, setting.value))) return false;
  }
  for (const Setting& setting : kWished) PlayerPutSetting(control(), setting.method, setting.value);
  return true;
}

void ControlHost::OnDestroy() noexcept {
  available_ = 0;
  if (connection_) connection_->Unadvise(cookie_);
  connection_.Reset();
  control_.Reset();
}

}  // namespace kelvo
