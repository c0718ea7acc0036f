// The player control in its invisible window, and the sink of its events.
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <stddef.h>

#include "base/sync/shared_word.h"
#include "base/text/wide.h"
#include "base/windows/com_ptr.h"
#include "base/windows/unique_handle.h"
#include "kelvo/input_plugin.h"

namespace kelvo {

// The plug-in's state, where hosts find it: right behind the fields of InputPlugin.
struct WmaFields {
  ComPtr<IUnknown> control;                    // player_control.h; null without a window
  SharedWord available;                        // 1: the control was made and took its settings
  SharedPointer<WindowHandle> owner_window{};  // also read by the control's thread
  uint32_t state = kStopped;
  wchar_t current_file[kTextCapacity] = {};  // opened last
  int32_t pause_ms = 0;                      // where a pause or a seek left off
  DWORD cookie = 0;
  ComPtr<IConnectionPoint> connection;  // held while connected
};
static_assert(sizeof(void*) != 4 ||
              (alignof(WmaFields) == 4 && offsetof(WmaFields, control) == 0 &&
               offsetof(WmaFields, available) == 4 && offsetof(WmaFields, owner_window) == 8 &&
               offsetof(WmaFields, state) == 12 && offsetof(WmaFields, current_file) == 16 &&
               offsetof(WmaFields, pause_ms) == 536 && offsetof(WmaFields, cookie) == 540 &&
               offsetof(WmaFields, connection) == 544));

// Hears the control's events, on the control's own thread. References own nothing: the sink lives
// with its plug-in, and outlives its connection because that is undone first.
class EventSink final : public IDispatch {
 public:
  // The window that learns of the end, null for none; borrowed.
  explicit EventSink(const SharedPointer<WindowHandle>& owner_window) noexcept
      : owner_window_(owner_window) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) noexcept override;
  ULONG STDMETHODCALLTYPE AddRef() noexcept override { return 2; }
  ULONG STDMETHODCALLTYPE Release() noexcept override { return 1; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) noexcept override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale,
                                        ITypeInfo** info) noexcept override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) noexcept override;
  // `event` is a PlayerEvent. The parameters' values are not looked at.
  HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID iid, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argument) noexcept override;

 private:
  const SharedPointer<WindowHandle>& owner_window_;
};

// Makes the control and connects it: `control`, `available`, `cookie` and `connection` of the
// fields, which are borrowed. All operations on the thread that calls StartUp.
class ControlHost {
 public:
  explicit ControlHost(WmaFields& fields) noexcept : fields_(fields), sink_(fields.owner_window) {}
  ControlHost(const ControlHost&) = delete;
  ControlHost& operator=(const ControlHost&) = delete;

  // Enters a multithreaded apartment and makes the window. False when one of these fails; nothing
  // is left behind then. True also without a control: see `available`.
  bool StartUp(HINSTANCE instance) noexcept;
  bool started() const noexcept { return started_; }

  // Lets go of control, window and apartment. On another thread than StartUp's the window cannot be
  // destroyed: it stays as a bare window of the system's, its control silent, until its own thread
  // looks at its messages; the apartment is left to that thread as well. When the process
  // ends, there is no call into the control: its threads are gone and would never answer.
  void ShutDown(bool process_ends) noexcept;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam,
                                    LPARAM lparam) noexcept;
  bool MakeWindow() noexcept;
  void ConnectControl() noexcept;
  void Connect(IUnknown* hosted) noexcept;
  bool Configure() noexcept;
  void Disconnect() noexcept;
  bool CloseWindow() noexcept;  // false on another thread than the one that made it
  void Abandon() noexcept;

  WmaFields& fields_;
  EventSink sink_;
  HINSTANCE instance_ = nullptr;
  HWND window_ = nullptr;
  bool started_ = false;
  UniqueModule containers_;  // keeps the code of the control's container loaded
};

}  // namespace kelvo
