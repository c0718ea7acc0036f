// The stand-ins for container and player control, used as the plug-in does, against what the
// system's reader decodes.
#include <windows.h>

#include <gtest/gtest.h>
#include <ocidl.h>
#include <stdio.h>

#include <functional>
#include <limits>
#include <string>
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
const wchar_t kStereoFile[] = L"..\\tests\\pocketpc\\stereo.wma";  // 3 s, 44100 Hz
const wchar_t kMonoFile[] = L"..\\tests\\pocketpc\\mono.wma";      // 1 s, 22050 Hz

// Counts the control's events; may call back into the control.
class EventCounter final : public IDispatch {
 public:
  std::function<void(DISPID)> on_event;  // on the control's thread
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
    if (on_event) on_event(event);
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

TEST_F(PlayerControl, IsMadeByContainersThatNameIt) {
  const HWND empty = MakeContainer(L"");
  ASSERT_TRUE(empty);
  IUnknown* control = nullptr;
  EXPECT_EQ(AtlAxGetControl(empty, &control), E_FAIL);
  DestroyWindow(empty);
  EXPECT_FALSE(MakeContainer(L"{22D6F312"));
  EXPECT_FALSE(MakeContainer(L"{00000001-0002-0003-0405-060708090A0B}"));
}

TEST_F(PlayerControl, PlaysWhatTheSystemDecodesAsStereo) {
  const struct {
    const wchar_t *file, *recording, *again;
    uint32_t rate;
    size_t copies;  // of each sample of mono
  } kCases[] = {{kStereoFile, L"player_stereo.wav", L"player_stereo-2.wav", 44100, 1},
                {kMonoFile, L"player_mono.wav", L"player_mono-2.wav", 22050, 2}};
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.rate);
    const Reference reference = DecodeWithSystem(c.file);
    ASSERT_FALSE(reference.samples.empty()) << "no Windows Media here: run scripts/setup.sh";
    const size_t samples = reference.samples.size() * c.copies;
    UseSink(c.recording, true);
    events_.over = 0;
    ASSERT_EQ(Open(c.file), S_OK);
    EXPECT_NEAR(Seconds(kPlayerGetDuration), samples / 2.0 / c.rate, 0.2);
    EXPECT_FALSE(ReadWav(c.recording).ok) << "opening does not play";
    ASSERT_EQ(Play(), S_OK);
    ASSERT_EQ(Play(), S_OK) << "playing already";
    ASSERT_TRUE(events_.WaitOver());
    ASSERT_EQ(Stop(), S_OK);  // its answer comes after any second event
    EXPECT_EQ(events_.over, 1);
    EXPECT_EQ(Seconds(kPlayerGetPosition), 0) << "ready to play again";
    const WavBytes wav = ReadWav(c.recording);
    EXPECT_TRUE(wav.ok);
    EXPECT_EQ(wav.rate, c.rate);
    EXPECT_EQ(wav.channels, 2u);
    ASSERT_EQ(wav.samples.size(), samples);
    EXPECT_EQ(reference.FirstDifference(wav.samples, c.copies), samples);
    ASSERT_EQ(Play(), S_OK);
    ASSERT_TRUE(events_.WaitOver(2));
    EXPECT_EQ(ReadWav(c.again).samples.size(), samples) << "the device was free meanwhile";
  }
}

TEST_F(PlayerControl, StartsWhereItIsSoughtAndIsSilentOnceLetGo) {
  const Reference reference = DecodeWithSystem(kStereoFile);
  UseSink(L"player_seek.wav", true);
  ASSERT_EQ(Open(kStereoFile), S_OK);
  for (const double seconds : {-1.0, -1e-9, 1e300, std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_TRUE(FAILED(Seek(seconds))) << seconds;
  }
  ASSERT_EQ(Seek(1000), S_OK);
  EXPECT_EQ(Seconds(kPlayerGetPosition), Seconds(kPlayerGetDuration));
  ASSERT_EQ(Seek(2.0), S_OK);
  EXPECT_EQ(Seconds(kPlayerGetPosition), 2.0);
  ASSERT_EQ(Play(), S_OK);
  ASSERT_TRUE(events_.WaitOver());
  const std::vector<int16_t> heard = ReadWav(L"player_seek.wav").samples;
  const size_t tail = 40000;
  ASSERT_GT(heard.size(), tail);
  EXPECT_LT(heard.size(), 3u * 44100);
  for (size_t i = 1; i <= tail; ++i) {
    ASSERT_NEAR(heard[heard.size() - i], reference.samples[reference.samples.size() - i],
                kRoundingSteps)
        << i;
  }
  UseSink(L"silence", false);
  ASSERT_EQ(Play(), S_OK);
  while (Seconds(kPlayerGetPosition) < 0.5) Sleep(5);
  DestroyWindow(window_);  // the container closes the control; we still hold it
  window_ = nullptr;
  EXPECT_EQ(Seconds(kPlayerGetPosition), 0);
  EXPECT_GT(events_.changes, 0);
  ASSERT_EQ(Play(), S_OK) << "but it still works";
  EXPECT_EQ(events_.over, 1) << "the user knows that he stopped";
}

TEST_F(PlayerControl, EventsMayCallTheControl) {
  UseSink(L"player_chain.wav", true);
  LONG rounds = 0;
  events_.on_event = [&](DISPID event) {
    if (event != kPlayerEndEvent || rounds++ > 0) return;
    EXPECT_EQ(Stop(), S_OK);
    EXPECT_EQ(Open(kMonoFile), S_OK);
    EXPECT_EQ(Play(), S_OK);
  };
  ASSERT_EQ(Open(kStereoFile), S_OK);
  ASSERT_EQ(Play(), S_OK);
  ASSERT_TRUE(events_.WaitOver(2));
  EXPECT_EQ(ReadWav(L"player_chain.wav").rate, 44100u);
  EXPECT_EQ(ReadWav(L"player_chain-2.wav").rate, 22050u);
}

TEST_F(PlayerControl, RefusesWhatIsNoMediaAndEndsWhatIsCut) {
  std::vector<char> whole(1 << 20);
  FILE* const good = _wfopen(kStereoFile, L"rb");
  ASSERT_TRUE(good);
  whole.resize(fread(whole.data(), 1, whole.size(), good));
  fclose(good);
  const auto save = [&whole](size_t bytes) {
    FILE* const file = _wfopen(L"bad.wma", L"wb");
    fwrite(whole.data(), 1, bytes, file);
    fclose(file);
  };
  UseSink(L"no such folder\\player.wav", true);
  ASSERT_EQ(Open(kMonoFile), S_OK);
  EXPECT_TRUE(FAILED(Play())) << "no device";
  UseSink(L"player_refused.wav", true);
  EXPECT_EQ(Play(), S_OK) << "there is one now";
  ASSERT_TRUE(events_.WaitOver());
  const struct {
    const wchar_t* path;
    size_t bytes;
  } kBad[] = {
      {L"no such file.wma", 0}, {L"..", 0}, {L"bad.wma", 0}, {L"bad.wma", 16}, {L"bad.wma", 200}};
  for (const auto& bad : kBad) {
    SCOPED_TRACE(testing::Message() << bad.path << bad.bytes);
    save(bad.bytes);
    ASSERT_EQ(Open(kMonoFile), S_OK) << "the good file before is given up";
    EXPECT_TRUE(FAILED(Open(bad.path)));
    EXPECT_TRUE(FAILED(Play()));
    EXPECT_TRUE(FAILED(Seek(0.5)));
    EXPECT_EQ(Seconds(kPlayerGetPosition), -1);
    EXPECT_EQ(Seconds(kPlayerGetDuration), -1);
  }
  EXPECT_TRUE(FAILED(Open(L"")));
  EXPECT_EQ(events_.over, 1);
  UseSink(L"player_cut.wav", true);
  save(whole.size() / 2);
  ASSERT_EQ(Open(L"bad.wma"), S_OK);
  ASSERT_EQ(Play(), S_OK);
  ASSERT_TRUE(events_.WaitOver(2));
  ASSERT_EQ(Stop(), S_OK);
  EXPECT_EQ(events_.over, 2);
  EXPECT_GT(ReadWav(L"player_cut.wav").samples.size(), 44100u);
}

}  // namespace
}  // namespace kelvo
