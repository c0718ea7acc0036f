#include "tests/pocketpc/hosted_player.h"

extern "C" {
__declspec(dllimport) BOOL WINAPI AtlAxWinInit();
__declspec(dllimport) HRESULT WINAPI AtlAxGetControl(HWND, IUnknown**);
}

namespace kelvo {

LONG EventCounter::CountOver() const {
  return counts_[4] + counts_[6] + counts_[7] + counts_[21];
}

bool EventCounter::WaitOver(LONG wanted) {
  while (CountOver() < wanted) {
    if (WaitForSingleObject(fired_, 60000) != WAIT_OBJECT_0) return false;
  }
  return true;
}

HRESULT EventCounter::QueryInterface(REFIID iid, void** out) {
  const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == kPlayerEventInterface;
  *out = known ? this : nullptr;
  if (known) AddRef();
  return known ? S_OK : E_NOINTERFACE;
}

HRESULT EventCounter::Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                             EXCEPINFO*, UINT*) {
  EXPECT_NE(parameters, nullptr);
  EXPECT_EQ(parameters->cNamedArgs, 0u);
  if (event < 0 || event >= 32) return DISP_E_MEMBERNOTFOUND;
  if (on_event) on_event(event);
  InterlockedIncrement(counts_ + event);
  SetEvent(fired_);
  return S_OK;
}

void HostedPlayer::SetUp() {
  ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
  ASSERT_TRUE(AtlAxWinInit());
  window_ = CreateWindowExW(0, L"AtlAxWin", kPlayerClassText, WS_POPUP, 0, 0, 1, 1, nullptr,
                            nullptr, GetModuleHandleW(nullptr), nullptr);
  ASSERT_NE(window_, nullptr);
  ComPtr<IUnknown> hosted;
  ASSERT_EQ(AtlAxGetControl(window_, hosted.Receive()), S_OK);
  ASSERT_EQ(control_.Query(hosted.get(), kPlayerInterface), S_OK);
  ComPtr<IConnectionPointContainer> container;
  ASSERT_EQ(container.Query(hosted.get(), IID_IConnectionPointContainer), S_OK);
  ASSERT_EQ(container->FindConnectionPoint(kPlayerEventInterface, point_.Receive()), S_OK);
  ASSERT_EQ(point_->Advise(&events_, &cookie_), S_OK);
}

void HostedPlayer::LetGo() {
  control_.Reset();
  if (window_) DestroyWindow(window_);
  window_ = nullptr;
  if (point_) {
    EXPECT_EQ(point_->Unadvise(cookie_), S_OK);
  }
  point_.Reset();
}

void HostedPlayer::TearDown() {
  LetGo();
  EXPECT_EQ(events_.references, 0);
  CoUninitialize();
}

HRESULT HostedPlayer::Open(const std::wstring& path) {
  const BSTR text = SysAllocString(path.c_str());
  const HRESULT result = PlayerOpenFile(control_.get(), text);
  SysFreeString(text);
  return result;
}

double HostedPlayer::Seconds(PlayerMethod which) {
  double seconds = 0;
  return SUCCEEDED(PlayerGetSeconds(control_.get(), which, &seconds)) ? seconds : -1;
}

}  // namespace kelvo
