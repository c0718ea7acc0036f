#include "input/wma/control_host.h"

#include <oleidl.h>

#include "base/sync/thread.h"
#include "base/windows/player_control.h"
#include "kelvo/messages.h"

namespace kelvo {
namespace {

constexpr wchar_t kWindowClass[] = L"VLWMAPlayer";
constexpr wchar_t kContainerModule[] = L"atlce300.dll";
constexpr wchar_t kContainerClass[] = L"AtlAxWin";
constexpr uintptr_t kContainerId = 1333;

// Written out, because the library of identities is not there on the device.
constexpr IID kUnknown = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr IID kDispatch = {0x20400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr IID kOleObject = {0x112, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr IID kConnectionPointContainer = {
    0xB196B284, 0xBAB4, 0x101A, {0xB6, 0x9C, 0x00, 0xAA, 0x00, 0x34, 0x1D, 0x07}};

struct Setting {
  int method;
  int32_t value;
};
// The control is of use only when it took all of these, in this order.
constexpr Setting kNeeded[] = {{30, 0}, {36, 0}, {26, 0}, {38, 0}};
// Then these, whatever it answers; number 34 once more at the end.
constexpr Setting kWished[] = {{96, 1}, {28, 0}, {32, 0}, {34, 0}, {24, 0}, {34, 0}};

bool Is(REFIID iid, const IID& other) noexcept {
  return memcmp(&iid, &other, sizeof(IID)) == 0;
}

template <class Function>
Function FindFunction(HMODULE module, const char* name) noexcept {
  if (!module) return nullptr;
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

// What a container does with its control before its window goes.
void CloseControl(IUnknown* control) noexcept {
  ComPtr<IOleObject> object;
  if (control && SUCCEEDED(object.Query(control, kOleObject))) object->Close(OLECLOSE_NOSAVE);
}

}  // namespace

HRESULT EventSink::QueryInterface(REFIID iid, void** out) noexcept {
  if (!out) return E_POINTER;
  const bool known = Is(iid, kUnknown) || Is(iid, kDispatch) || Is(iid, kPlayerEventInterface);
  *out = known ? static_cast<IDispatch*>(this) : nullptr;
  return known ? S_OK : E_NOINTERFACE;
}

HRESULT EventSink::GetTypeInfoCount(UINT* count) noexcept {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT EventSink::GetTypeInfo(UINT, LCID, ITypeInfo** info) noexcept {
  if (info) *info = nullptr;
  return E_NOTIMPL;
}

HRESULT EventSink::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) noexcept {
  return E_NOTIMPL;
}

HRESULT EventSink::Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                          EXCEPINFO*, UINT*) noexcept {
  if (!parameters) return E_POINTER;
  if (parameters->cNamedArgs != 0) return DISP_E_NONAMEDARGS;
  switch (event) {
    case kPlayerEndEvent:
    case kPlayerErrorEvent:
    case kPlayerOverEvent7:
    case kPlayerOverEvent21:
      PostToWindow(owner_window_, kMessageEndOfPlayback, 0, 0);
      return S_OK;
    case kPlayerChangeEvent:
      return S_OK;
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

bool ControlHost::StartUp(HINSTANCE instance) noexcept {
  if (started_ || FAILED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) return false;
  instance_ = instance;
  // Loaded by name: a machine without it still gets the rest of the library.
  containers_.Reset(LoadLibraryW(kContainerModule));
  using Init = BOOL(WINAPI*)();
  if (const auto init = FindFunction<Init>(containers_.get(), "AtlAxWinInit")) init();
  started_ = MakeWindow();
  if (!started_) {
    containers_.Reset();
    CoUninitialize();
  }
  return started_;
}

bool ControlHost::MakeWindow() noexcept {
  WNDCLASSW window_class = {};
  window_class.style = CS_HREDRAW | CS_VREDRAW;
  window_class.lpfnWndProc = &DefWindowProcW;  // the class may outlive this code
  window_class.hInstance = instance_;
  window_class.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
  window_class.lpszClassName = kWindowClass;
  RegisterClassW(&window_class);
  window_ =
      CreateWindowExW(0, kWindowClass, L"", 0, 0, 0, 1, 1, nullptr, nullptr, instance_, nullptr);
  if (!window_) {
    UnregisterClassW(kWindowClass, instance_);
    return false;
  }
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
  ConnectControl();
  return true;
}

void ControlHost::ShutDown(bool process_ends) noexcept {
  if (!started_) return;
  started_ = false;
  bool is_own_thread = true;
  if (process_ends) {
    Abandon();
  } else {
    is_own_thread = CloseWindow();
  }
  containers_.Reset();
  // Another thread's apartment is its own; that of the loading thread ends with it.
  if (is_own_thread) CoUninitialize();
}

bool ControlHost::CloseWindow() noexcept {
  bool destroyed = true;
  const ComPtr<IUnknown> control = ComPtr<IUnknown>::Share(fields_.control.get());
  Disconnect();
  if (window_) {
    // From here on the window is nobody's: its end shall not end the host's message loop, and it
    // may outlive this code.
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&DefWindowProcW));
    destroyed = DestroyWindow(window_) != FALSE;  // by the thread alone that made it
    if (!destroyed) {
      CloseControl(control.get());
      PostMessageW(window_, WM_CLOSE, 0, 0);  // it ends when its thread next looks at its messages
      static_cast<void>(containers_.Release());
    }
    window_ = nullptr;
  }
  UnregisterClassW(kWindowClass, instance_);
  return destroyed;
}

void ControlHost::Abandon() noexcept {
  window_ = nullptr;
  fields_.available = 0;
  static_cast<void>(fields_.connection.Detach());
  static_cast<void>(fields_.control.Detach());
  static_cast<void>(containers_.Release());
}

LRESULT CALLBACK ControlHost::Procedure(HWND window, UINT message, WPARAM wparam,
                                        LPARAM lparam) noexcept {
  if (message == WM_DESTROY) {
    auto* const host = reinterpret_cast<ControlHost*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    host->Disconnect();
    host->window_ = nullptr;
    PostQuitMessage(0);
    return 0;
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

void ControlHost::ConnectControl() noexcept {
  using GetControl = HRESULT(WINAPI*)(HWND, IUnknown**);
  const auto get_control = FindFunction<GetControl>(containers_.get(), "AtlAxGetControl");
  const HWND container =
      CreateWindowExW(0, kContainerClass, kPlayerClassText, WS_CHILD, 0, 0, 1, 1, window_,
                      reinterpret_cast<HMENU>(kContainerId), instance_, nullptr);
  if (!container || !get_control) return;
  ComPtr<IUnknown> hosted;
  if (FAILED(get_control(container, hosted.Receive())) || !hosted) return;
  if (FAILED(fields_.control.Query(hosted.get(), kPlayerInterface))) return;
  Connect(hosted.get());
  fields_.available = Configure();
}

// Without a connection the host never hears of an end, but everything else works.
void ControlHost::Connect(IUnknown* hosted) noexcept {
  ComPtr<IConnectionPointContainer> container;
  ComPtr<IConnectionPoint>& connection = fields_.connection;
  if (FAILED(container.Query(hosted, kConnectionPointContainer))) return;
  if (FAILED(container->FindConnectionPoint(kPlayerEventInterface, connection.Receive())) ||
      !connection) {
    return;
  }
  if (FAILED(connection->Advise(&sink_, &fields_.cookie))) connection.Reset();
}

bool ControlHost::Configure() noexcept {
  IUnknown* const control = fields_.control.get();
  for (const Setting& setting : kNeeded) {
    if (FAILED(PlayerPutSetting(control, setting.method, setting.value))) return false;
  }
  for (const Setting& setting : kWished) PlayerPutSetting(control, setting.method, setting.value);
  return true;
}

void ControlHost::Disconnect() noexcept {
  fields_.available = 0;
  if (fields_.connection) fields_.connection->Unadvise(fields_.cookie);
  fields_.connection.Reset();
  fields_.control.Reset();
}

}  // namespace kelvo
