// The input plug-ins. A file that cannot be opened or played leaves the plug-in stopped.
#include "tests/faults/library_faults.h"

#include "kelvo/ogg_vorbis_input.h"
#include "kelvo/wma_input.h"
#include "tests/pocketpc/wav_bytes.h"
#include "tests/support/end_messages.h"
#include "tests/support/memory_reader.h"
#include "tests/support/recording_output.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::LibraryFaults;
using test::Utf8;

template <class Plugin>
std::string Information(Plugin& plugin, const std::wstring& path) {
  wchar_t texts[4][kMaxText] = {};
  MediaInfo info = {};
  uint32_t length_ms = 0, version = 0;
  std::string all = std::to_string(plugin.GetFileInfo(path.c_str(), texts[0], texts[1], &info,
                                                      &length_ms, &version, texts[2], texts[3]));
  for (const wchar_t* text : texts) all += "|" + Utf8(text);
  return all + "|" + Utf8(info.genre) + std::to_string(info.sample_rate) + " " +
         std::to_string(info.bit_rate) + " " + std::to_string(length_ms);
}

class InputFaults : public LibraryFaults {
 protected:
  InputFaults() { last_misses_ = 3; }
  // Plays what has been opened, with all that can be asked meanwhile, until it ends by itself.
  std::string Use(InputPlugin& plugin) {
    const int32_t played = plugin.Play();
    EXPECT_TRUE(played || plugin.GetState() == kStopped);
    std::string all = std::to_string(played);
    plugin.TogglePause();
    all += std::to_string(plugin.GetState());
    plugin.SeekMs(100);
    plugin.TogglePause();
    all += std::to_string(plugin.GetState()) + " " + std::to_string(plugin.GetLengthMs());
    return all;
  }
  test::EndMessages ends_;
};

TEST_F(InputFaults, OggVorbisInformation) {
  OggVorbisInput& plugin = Get<OggVorbisInput>(kFeatureOggVorbis);
  Sweep([&] { return Information(plugin, folder_.Path(L"two.ogg")); });
}

TEST_F(InputFaults, OggVorbisPlayback) {
  OggVorbisInput& plugin = Get<OggVorbisInput>(kFeatureOggVorbis);
  test::MemoryReader reader(test::ReadMedia("chained.ogg"));
  plugin.SetReader(&reader);
  plugin.SetNotifyWindow(ends_.window());
  Sweep([&] {
    test::RecordingOutput output;
    plugin.SetOutput(&output);
    output.SetHold(true);
    const int32_t opened = plugin.Open(L"x.ogg", 0);
    wchar_t title[kMaxText] = L"";
    MediaInfo info = {};
    plugin.GetDisplayTitle(title);
    plugin.GetMediaInfo(&info);
    std::string all = std::to_string(opened) + Utf8(title) + std::to_string(info.sample_rate);
    all += Use(plugin);
    output.SetHold(false);
    while (plugin.GetState() == kPlaying) Sleep(1);
    all += " " + std::to_string(output.pcm().size());
    plugin.Stop();
    EXPECT_EQ(plugin.GetState(), kStopped);
    all += " " + std::to_string(plugin.Close(0, 0));
    all += ends_.count() ? "" : " no message";
    ends_.Clear();
    return all;
  });
  plugin.SetNotifyWindow(nullptr);
  plugin.SetReader(nullptr);
  plugin.SetOutput(nullptr);
}

TEST_F(InputFaults, WindowsMediaInformation) {
  WmaInput& plugin = Get<WmaInput>(kFeatureWma);
  Sweep([&] { return Information(plugin, folder_.Path(L"three.wma")); });
}

TEST_F(InputFaults, WindowsMediaPlayback) {
  UseSink(L"silence", true);
  folder_.Write(L"three.wma", Bytes("sample.wma"));
  const std::wstring path = folder_.Path(L"three.wma");
  WmaInput& plugin = Get<WmaInput>(kFeatureWma);
  plugin.SetOwnerWindow(ends_.window());
  Sweep([&] {
    const int32_t opened = plugin.Open(path.c_str(), 0);
    std::string all = std::to_string(opened) + Use(plugin);
    int16_t samples[kVisualisationSamples];
    plugin.GetVisualisation(samples);
    // Nobody would tell of the end when the message has failed.
    for (int i = 0; i < 100 && ends_.count() == 0; ++i) Sleep(20);
    all += std::to_string(ends_.count());
    ends_.Clear();
    plugin.Close(0, 0);
    EXPECT_EQ(plugin.GetState(), kStopped);
    test::WindowsUser::HandleMessages();
    ends_.Clear();
    return all;
  });
  plugin.SetOwnerWindow(nullptr);
}

}  // namespace
}  // namespace kelvo
