#pragma once

#include <windows.h>

#include <gtest/gtest.h>
#include <ocidl.h>

#include <functional>
#include <string>

#include "base/windows/com_ptr.h"
#include "base/windows/player_control.h"

namespace kelvo {

// Counts the control's events; may call back into the control.
class EventCounter final : public IDispatch {
 public:
  std::function<void(DISPID)> on_event;  // on the control's thread
  LONG Count(DISPID event) const { return counts_[event]; }
  LONG CountOver() const;  // of the four that say playing is over
  // Until `wanted` of those four have come; false after a long time.
  bool WaitOver(LONG wanted = 1);

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return InterlockedIncrement(&references); }
  ULONG STDMETHODCALLTYPE Release() override { return InterlockedDecrement(&references); }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override;

  LONG references = 0;

 private:
  volatile LONG counts_[32] = {};
  HANDLE fired_ = CreateEventW(nullptr, FALSE, FALSE, nullptr);
};

// The control in a container window, made from the multithreaded apartment as the plug-in does.
class HostedPlayer : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  HRESULT Open(const std::wstring& path);
  HRESULT Play() { return PlayerCommand(control_.get(), kPlayerPlay); }
  HRESULT Stop() { return PlayerCommand(control_.get(), kPlayerStop); }
  HRESULT Seek(double seconds) { return PlayerPutPositionSeconds(control_.get(), seconds); }
  double Seconds(PlayerMethod which);  // -1 on failure
  // The control, its window and the connection to its events, in that order.
  void LetGo();

  EventCounter events_;
  HWND window_ = nullptr;
  ComPtr<IUnknown> control_;
  ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

// Where the build makes the media, seen from the folder of the programs.
inline const wchar_t kStereoFile[] = L"..\\tests\\pocketpc\\stereo.wma";  // 3 s, 44100 Hz
inline const wchar_t kMonoFile[] = L"..\\tests\\pocketpc\\mono.wma";      // 1 s, 22050 Hz

}  // namespace kelvo
