// The stand-ins for container and player control, used as the plug-in does, against what the
// system's reader decodes.
#include <windows.h>

#include <gtest/gtest.h>
#include <ocidl.h>

#include <limits>
#include <vector>

#include "base/windows/com_ptr.h"
#include "base/windows/player_control.h"
#include "tests/pocketpc/reference_decode.h"
#include "tests/pocketpc/wav_bytes.h"

extern "C" {
__declspec(dllimport) BOOL WINAPI AtlAxWinInit();
__declspec(dllimport) HRESULT WINAPI AtlAxGetControl(HWND, IUnknown**);
}

namespace kelvo {
namespace {

// Where the build makes the media, seen from the folder of the programs.
const wchar_t kMonoFile[] = L"..\\tests\\pocketpc\\mono.wma";  // 1 s, 22050 Hz

// Counts the control's events.
class EventCounter final : public IDispatch {
 public:
  LONG references = 0;
  volatile LONG over = 0;  // of the four that say so
  volatile LONG changes = 0;

  bool WaitOver(LONG wanted = 1) {
    while (over < wanted) {
      if (WaitForSingleObject(fired_, 60000) != WAIT_OBJECT_0) return false;
    }
    return true;
  }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    *out = iid == IID_IUnknown || iid == IID_IDispatch || iid == kPlayerEventInterface ? this
                                                                                       : nullptr;
    if (*out) AddRef();
    return *out ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return InterlockedIncrement(&references); }
  ULONG STDMETHODCALLTYPE Release() override { return InterlockedDecrement(&references); }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                   VARIANT*, EXCEPINFO*, UINT*) override {
    EXPECT_TRUE(parameters && parameters->cNamedArgs == 0);
    if (event == 4 || event == 6 || event == 7 || event == 21) InterlockedIncrement(&over);
    if (event == kPlayerChangeEvent) InterlockedIncrement(&changes);
    SetEvent(fired_);
    return S_OK;
  }

 private:
  HANDLE fired_ = CreateEventW(nullptr, FALSE, FALSE, nullptr);
};

HWND MakeContainer(const wchar_t* text) {
  return CreateWindowExW(0, L"AtlAxWin", text, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                         GetModuleHandleW(nullptr), nullptr);
}

class PlayerControl : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    ASSERT_TRUE(AtlAxWinInit());
    window_ = MakeContainer(kPlayerClassText);
    ComPtr<IUnknown> hosted;
    ASSERT_EQ(AtlAxGetControl(window_, hosted.Receive()), S_OK);
    ASSERT_EQ(control_.Query(hosted.get(), kPlayerInterface), S_OK);
    ComPtr<IConnectionPointContainer> container;
    ASSERT_EQ(container.Query(hosted.get(), IID_IConnectionPointContainer), S_OK);
    ASSERT_EQ(container->FindConnectionPoint(kPlayerEventInterface, point_.Receive()), S_OK);
    ASSERT_EQ(point_->Advise(&events_, &cookie_), S_OK);
  }
  void TearDown() override {
    control_.Reset();
    if (window_) DestroyWindow(window_);
    EXPECT_EQ(point_->Unadvise(cookie_), S_OK);
    EXPECT_NE(point_->Unadvise(cookie_), S_OK);
    point_.Reset();
    EXPECT_EQ(events_.references, 0);
    CoUninitialize();
  }

  HRESULT Open(const wchar_t* path) {
    const BSTR text = SysAllocString(path);
    const HRESULT result = PlayerOpenFile(control_.get(), text);
    SysFreeString(text);
    return result;
  }
  HRESULT Play() { return PlayerCommand(control_.get(), kPlayerPlay); }
  HRESULT Stop() { return PlayerCommand(control_.get(), kPlayerStop); }
  HRESULT Seek(double seconds) { return PlayerPutPositionSeconds(control_.get(), seconds); }
  double Seconds(PlayerMethod which) {
    double seconds = 0;
    return SUCCEEDED(PlayerGetSeconds(control_.get(), which, &seconds)) ? seconds : -1;
  }

  EventCounter events_;
  HWND window_ = nullptr;
  ComPtr<IUnknown> control_;
  ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

// Stereo: tests/host/windows/player_sound_path_test.cpp.
TEST_F(PlayerControl, PlaysMonoAsStereoAndAgain) {
  const Reference reference = DecodeWithSystem(kMonoFile);
  ASSERT_FALSE(reference.samples.empty()) << "no Windows Media here: run scripts/setup.sh";
  const size_t samples = reference.samples.size() * 2;
  UseSink(L"player_mono.wav", true);
  ASSERT_EQ(Open(kMonoFile), S_OK);
  EXPECT_NEAR(Seconds(kPlayerGetDuration), samples / 2.0 / 22050, 0.2);
  EXPECT_FALSE(ReadWav(L"player_mono.wav").ok) << "opening does not play";
  ASSERT_EQ(Play(), S_OK);
  ASSERT_EQ(Play(), S_OK) << "playing already";
  ASSERT_TRUE(events_.WaitOver());
  ASSERT_EQ(Stop(), S_OK);  // its answer comes after any second event
  EXPECT_EQ(events_.over, 1);
  EXPECT_GT(events_.changes, 0);
  EXPECT_EQ(Seconds(kPlayerGetPosition), 0) << "ready to play again";
  const WavBytes wav = ReadWav(L"player_mono.wav");
  EXPECT_EQ(wav.rate, 22050u);
  EXPECT_EQ(wav.channels, 2u);
  ASSERT_EQ(wav.samples.size(), samples);
  EXPECT_EQ(reference.FirstDifference(wav.samples, 2), samples);
  ASSERT_EQ(Play(), S_OK);
  ASSERT_TRUE(events_.WaitOver(2));
  EXPECT_EQ(ReadWav(L"player_mono-2.wav").samples.size(), samples) << "the device was free";
}

TEST_F(PlayerControl, RefusesWhatIsNoMediaAndWildPlaces) {
  UseSink(L"player_refused.wav", true);
  for (const wchar_t* bad : {L"no such file.wma", L"..", L"garbage.wma"}) {
    CloseHandle(CreateFileW(L"garbage.wma", GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    ASSERT_EQ(Open(kMonoFile), S_OK) << "the good file before is given up";
    EXPECT_TRUE(FAILED(Open(bad)));
    EXPECT_TRUE(FAILED(Play()));
    EXPECT_TRUE(FAILED(Seek(0.5)));
    EXPECT_EQ(Seconds(kPlayerGetPosition), -1);
  }
  ASSERT_EQ(Open(kMonoFile), S_OK);
  for (const double seconds : {-1.0, -1e-9, 1e300, std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_TRUE(FAILED(Seek(seconds))) << seconds;
  }
  ASSERT_EQ(Seek(1000), S_OK);
  EXPECT_EQ(Seconds(kPlayerGetPosition), Seconds(kPlayerGetDuration));
  ASSERT_EQ(Seek(0.25), S_OK);
  EXPECT_EQ(Seconds(kPlayerGetPosition), 0.25);
  DestroyWindow(window_);  // the container closes the control; we still hold it
  window_ = nullptr;
  ASSERT_EQ(Play(), S_OK) << "but it still works";
  ASSERT_TRUE(events_.WaitOver());
}

}  // namespace
}  // namespace kelvo
