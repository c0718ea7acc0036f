// The plug-in on a player control of the test's own: what it asks of it, and what it makes of the
// answers.
#include "input/wma/wma_input_plugin.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <limits>
#include <string>
#include <thread>

#include "effects/effects_processor.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/end_messages.h"
#include "tests/support/media_files.h"
#include "tests/support/raw_slot.h"
#include "tests/support/wide_text.h"
#include "tests/wma/fake_player.h"

namespace kelvo {
namespace {

using test::MediaPath;
using test::Utf8;
using test::Wide;

constexpr char kSettings[] = "30=0 36=0 26=0 38=0 96=1 28=0 32=0 34=0 24=0 34=0 ";

// Of this thread: other programs that use the library may be running.
HWND FindPluginWindow() {
  HWND window = nullptr;
  while ((window = FindWindowExW(nullptr, window, L"VLWMAPlayer", nullptr)) != nullptr) {
    if (GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId()) break;
  }
  return window;
}

class WmaInputPluginTest : public ::testing::Test {
 protected:
  ~WmaInputPluginTest() override {
    plugin.ShutDown(false);
    EXPECT_FALSE(FindPluginWindow());
  }
  bool Start() { return plugin.Start(GetModuleHandleW(nullptr), effects); }

  FakePlayer player;
  FixedPointEffects effects{SystemEffectsPlatform()};
  WmaInputPlugin plugin{SystemFiles()};
};

TEST_F(WmaInputPluginTest, IsAvailableWithAControlThatTakesItsSettings) {
  const struct {
    Fault fault;
    int refused_setting;
    bool available;
    std::string log;
  } kCases[] = {
      {Fault::kNone, -1, true, kSettings},
      {Fault::kNotMade, -1, false, ""},
      {Fault::kNoPlayer, -1, false, ""},
      {Fault::kNoEvents, -1, true, kSettings},
      {Fault::kRefusesSinks, -1, true, kSettings},
      {Fault::kNone, 30, false, "30=0 "},
      {Fault::kNone, 36, false, "30=0 36=0 "},
      {Fault::kNone, 26, false, "30=0 36=0 26=0 "},
      {Fault::kNone, 38, false, "30=0 36=0 26=0 38=0 "},
      {Fault::kNone, 96, true, kSettings},
      {Fault::kNone, 34, true, kSettings},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(&c - kCases);
    player.fault = c.fault;
    player.refused_setting = c.refused_setting;
    EXPECT_TRUE(Start()) << "without a control there is still a window";
    EXPECT_FALSE(Start()) << "only once";
    const HWND window = FindPluginWindow();
    EXPECT_TRUE(window && !GetParent(window) && !IsWindowVisible(window));
    EXPECT_TRUE(!c.available || GetDlgItem(window, 1333)) << "the container";
    EXPECT_EQ(plugin.available(), c.available);
    EXPECT_EQ(player.TakeLog(), c.log);
    plugin.ShutDown(false);
    EXPECT_FALSE(plugin.available());
    EXPECT_FALSE(player.sink);
    player.TakeLog();
  }
}

template <class T>
T At(void* object, size_t offset_32, size_t offset_64) {
  return test::RawField<T>(object, sizeof(void*) == 4 ? offset_32 : offset_64);
}

TEST_F(WmaInputPluginTest, KeepsItsStateWhereHostsReadIt) {
  void* const object = static_cast<WmaInput*>(&plugin);
  const auto state = [&] { return At<uint32_t>(object, 32, 64); };
  const auto file = [&] {
    const auto text = At<std::array<wchar_t, kMaxText>>(object, 36, 68);
    return Utf8(text.data());
  };
  EXPECT_EQ(At<void*>(object, 20, 40), nullptr);
  EXPECT_EQ(At<uint32_t>(object, 24, 48), 0u);
  EXPECT_EQ(state(), kStopped);
  EXPECT_EQ(file(), "");
  ASSERT_TRUE(Start());
  EXPECT_EQ(At<void*>(object, 20, 40), player.control());
  EXPECT_EQ(At<uint32_t>(object, 24, 48), 1u);
  EXPECT_EQ(At<uint32_t>(object, 560, 592), 77u) << "the sink's cookie";
  EXPECT_EQ(At<void*>(object, 564, 600), player.connection_point());
  plugin.SetOwnerWindow(object);
  EXPECT_EQ(At<void*>(object, 28, 56), object);
  plugin.SetOwnerWindow(nullptr);
  const std::string path = MediaPath("sample.wma");
  ASSERT_EQ(plugin.Open(Wide(path), 0), 1);
  EXPECT_EQ(file(), path);
  plugin.SetState(3);
  EXPECT_EQ(At<uint32_t>(object, 16, 32), 3u) << "the base's";
  EXPECT_EQ(state(), kStopped);
  plugin.Play();
  EXPECT_EQ(state(), kPlaying);
  plugin.SeekMs(4711);
  EXPECT_EQ(At<int32_t>(object, 556, 588), 4711);
  player.seconds = 2.25;
  plugin.TogglePause();
  EXPECT_EQ(state(), kPaused);
  EXPECT_EQ(At<int32_t>(object, 556, 588), 2250);
  EXPECT_EQ(plugin.Open(Wide("no such file.wma"), 0), 0);
  EXPECT_EQ(file(), path) << "still the one before";
  plugin.ShutDown(false);
  EXPECT_EQ(At<void*>(object, 20, 40), nullptr);
  EXPECT_EQ(At<uint32_t>(object, 24, 48), 0u);
  EXPECT_EQ(At<void*>(object, 564, 600), nullptr);
}

std::string g_states;

void KELVO_SLOT_CALL RecordState(void*, uint32_t state) {
  g_states += std::to_string(state) + " ";
}

// A host may have put its own table into the object.
TEST_F(WmaInputPluginTest, ChangesItsStateThroughTheObjectsTable) {
  ASSERT_TRUE(Start());
  void** const object = reinterpret_cast<void**>(static_cast<WmaInput*>(&plugin));
  void* const table = *object;
  void* own[19];
  memcpy(own, table, sizeof(own));
  own[5] = reinterpret_cast<void*>(&RecordState);
  *object = own;
  g_states.clear();
  const std::string path = MediaPath("sample.wma");
  test::CallSlot<int32_t>(object, 14, static_cast<const wchar_t*>(Wide(path)), 0u);
  for (const int slot : {12, 11, 11, 10, 12, 13}) test::CallSlot<int32_t>(object, slot);
  player.result = E_FAIL;
  test::CallSlot<int32_t>(object, 12);
  *object = table;
  EXPECT_EQ(g_states, "1 2 3 2 1 2 1 1 ");
  EXPECT_EQ(plugin.GetState(), kStopped);
}

TEST_F(WmaInputPluginTest, StartsNothingOnASingleThreadedHost) {
  std::thread([this] {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    EXPECT_FALSE(Start());
    CoUninitialize();
  }).join();
  EXPECT_FALSE(FindPluginWindow());
  EXPECT_TRUE(Start()) << "nothing was left behind";
}

TEST_F(WmaInputPluginTest, LosesItsControlWithItsWindow) {
  MSG message;
  ASSERT_TRUE(Start());
  plugin.ShutDown(false);
  EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) << "the host runs on";
  ASSERT_TRUE(Start());
  player.TakeLog();
  DestroyWindow(FindPluginWindow());
  EXPECT_EQ(player.TakeLog(), "unadvise 77 ");
  EXPECT_FALSE(plugin.available());
  EXPECT_EQ(plugin.Play(), 0);
  EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
}

TEST_F(WmaInputPluginTest, IsHarmlessWithoutAControl) {
  EXPECT_EQ(plugin.Open(Wide(MediaPath("sample.wma")), 0), 0);
  EXPECT_EQ(plugin.TogglePause(), 1);
  EXPECT_EQ(plugin.Play() | plugin.SeekMs(5) | plugin.Stop() | plugin.Close(1, 2) |
                plugin.GetLengthMs() | plugin.GetPositionMs(0, 0),
            0);
  EXPECT_EQ(plugin.GetState(), kStopped);
}

TEST_F(WmaInputPluginTest, DrivesTheControlFromStateToState) {
  ASSERT_TRUE(Start());
  player.TakeLog();
  const std::string path = MediaPath("sample.wma");
  using Step = std::function<int32_t()>;
  const Step open = [&] { return plugin.Open(Wide(path), 0); },
             play = [&] { return plugin.Play(); }, toggle = [&] { return plugin.TogglePause(); },
             stop = [&] { return plugin.Stop(); }, close = [&] { return plugin.Close(1, 2); },
             seek = [&] { return plugin.SeekMs(1500); },
             force = [&] { return plugin.SetState(3), 0; };
  const struct {
    const char* name;
    Step run;
    HRESULT control;
    int32_t result;
    uint32_t state;
    std::string log;
  } kSteps[] = {
      {"open", open, S_OK, 1, 1, "open " + path + " "},
      {"pause while stopped", toggle, S_OK, 1, 1, ""},
      {"play", play, S_OK, 1, 2, "play "},
      {"the host's own state stays apart", force, S_OK, 0, 2, ""},
      {"pause", toggle, S_OK, 0, 3, "stop "},
      {"resume", toggle, S_OK, 1, 2, "seek 2.250 play "},
      {"pause that the control refuses", toggle, E_FAIL, E_FAIL, 3, "stop "},
      {"seek while paused", seek, S_OK, 1, 3, "seek 1.500 "},
      {"resume there", toggle, S_OK, 1, 2, "seek 1.500 play "},
      {"pause again", toggle, S_OK, 0, 3, "stop "},
      {"resume that fails", toggle, E_FAIL, 0, 1, "seek 2.250 play "},
      {"seek that fails", seek, E_FAIL, 0, 1, "seek 1.500 "},
      {"play with another success", play, S_FALSE, 1, 2, "play "},
      {"stop", stop, S_FALSE, S_FALSE, 1, "stop "},
      {"play that fails", play, E_FAIL, 0, 1, "play "},
      {"play once more", play, S_OK, 1, 2, "play "},
      {"close stops", close, S_OK, 0, 1, "stop "},
      {"and again from playing", play, S_OK, 1, 2, "play "},
      {"open that the control refuses", open, E_FAIL, 0, 1, "open " + path + " "},
  };
  player.seconds = 2.25;
  for (const auto& s : kSteps) {
    SCOPED_TRACE(s.name);
    player.result = s.control;
    const int32_t result = s.run();
    EXPECT_EQ(result, s.result);
    EXPECT_EQ(plugin.GetState(), s.state);
    EXPECT_EQ(player.TakeLog(), s.log);
  }
}

TEST_F(WmaInputPluginTest, ConvertsSeconds) {
  ASSERT_TRUE(Start());
  const struct {
    double seconds;
    int32_t ms;
  } kCases[] = {
      {0, 0},
      {1.9996, 1999},
      {-1.5, -1500},
      {1e12, INT32_MAX},
      {-1e12, INT32_MIN},
      {std::numeric_limits<double>::quiet_NaN(), 0},
  };
  for (const auto& c : kCases) {
    player.seconds = c.seconds;
    EXPECT_EQ(plugin.GetLengthMs(), c.ms) << c.seconds;
    EXPECT_EQ(plugin.GetPositionMs(0, 0), c.ms) << c.seconds;
  }
  player.seconds = 4;
  player.result = E_FAIL;
  EXPECT_EQ(plugin.GetLengthMs(), 0);
  EXPECT_EQ(plugin.GetPositionMs(0, 0), 0);
}

TEST_F(WmaInputPluginTest, RefusesFilesThatItCannotPlay) {
  ASSERT_TRUE(Start());
  player.TakeLog();
  ASSERT_EQ(plugin.Open(Wide(MediaPath("sample.wma")), 0), 1);
  player.TakeLog();
  const struct {
    const char* name;
    std::string path;
  } kCases[] = {
      {"missing", "no such file.wma"},
      {"no Windows Media", MediaPath("sample.ogg")},
      {"empty name", ""},
      {"name too long", std::string(260, 'a')},
      {"name outside the code page", "\xE4\xB8\xAD.wma"},
  };
  for (const auto& c : kCases) {
    plugin.Play();
    player.TakeLog();
    EXPECT_EQ(plugin.Open(Wide(c.path), 0), 0) << c.name;
    EXPECT_EQ(plugin.GetState(), kStopped) << c.name;
    EXPECT_EQ(player.TakeLog(), "") << c.name;
  }
  EXPECT_EQ(plugin.Open(nullptr, 0), 0);
  wchar_t title[kMaxText];
  EXPECT_EQ(plugin.GetDisplayTitle(title), 1);
  EXPECT_EQ(Utf8(title), "The Ring Buffers - Sixteen Strings") << "still the one before";

  const test::EndMessages owner;
  plugin.SetOwnerWindow(owner.window());
  std::string said;
  {
    const test::BoxAnswer box(L"Error", &said);
    EXPECT_EQ(plugin.Open(Wide("\xE4\xB8\xAD.wma"), 0), 0);
  }
  EXPECT_EQ(said, "Please, change regional settings to correctly play file \xE4\xB8\xAD.wma");
}

TEST_F(WmaInputPluginTest, AnswersEveryEventAndTellsItsOwnerOfTheEnd) {
  ASSERT_TRUE(Start());
  test::EndMessages messages;
  VARIANT values[2] = {};
  DISPID name = 0;
  DISPPARAMS none = {};
  DISPPARAMS two = {values, nullptr, 2, 0};
  DISPPARAMS named = {values, &name, 1, 1};
  for (const bool owned : {true, false}) {
    plugin.SetOwnerWindow(owned ? messages.window() : nullptr);
    for (DISPID event = -1; event <= 40; ++event) {
      SCOPED_TRACE(event);
      const bool is_end = event == 4 || event == 6 || event == 7 || event == 21;
      for (DISPPARAMS* parameters : {&none, &two}) {
        EXPECT_EQ(player.Fire(event, parameters),
                  is_end || event == 17 ? S_OK : static_cast<HRESULT>(0x80020003));
        EXPECT_EQ(messages.count(), owned && is_end ? 1 : 0);
        messages.Clear();
      }
      EXPECT_EQ(player.Fire(event, nullptr), static_cast<HRESULT>(0x80004003));
      EXPECT_EQ(player.Fire(event, &named), static_cast<HRESULT>(0x80020007));
      EXPECT_EQ(messages.count(), 0);
    }
  }
  for (const IID& iid : {IID_IUnknown, IID_IDispatch, kPlayerEventInterface, kPlayerInterface}) {
    void* out = &player;
    const bool known = iid != kPlayerInterface;
    EXPECT_EQ(player.sink->QueryInterface(iid, &out), known ? S_OK : E_NOINTERFACE);
    EXPECT_EQ(out, known ? player.sink.get() : nullptr);
  }
  EXPECT_EQ(player.sink->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

// Without a control, too.
TEST_F(WmaInputPluginTest, ClearsWhatItKnowsNothingAbout) {
  for (const char* name : {"sample.wma", "sample.ogg", "no such file.wma"}) {
    SCOPED_TRACE(name);
    wchar_t texts[4][kMaxText];
    MediaInfo info;
    const MediaInfo zero = {};
    uint32_t length_ms = 1, sdk = 1;
    memset(texts, 0xAA, sizeof(texts));
    memset(&info, 0xAA, sizeof(info));
    const bool known = strcmp(name, "sample.wma") == 0;
    EXPECT_EQ(plugin.GetFileInfo(Wide(MediaPath(name)), texts[0], texts[1], &info, &length_ms, &sdk,
                                 texts[2], texts[3]),
              known);
    for (const auto& text : texts) EXPECT_EQ(text[0] != 0, known);
    EXPECT_EQ(memcmp(&info, &zero, sizeof(info)) != 0, known);
    EXPECT_EQ(length_ms != 0, known);
    EXPECT_EQ(sdk, 0u);
    EXPECT_EQ(plugin.GetFileInfo(Wide(MediaPath(name)), nullptr, nullptr, nullptr, nullptr, nullptr,
                                 nullptr, nullptr),
              known);
  }
  EXPECT_EQ(
      plugin.GetFileInfo(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
      0);
}

}  // namespace
}  // namespace kelvo
