// Storms: a file is opened, controls come in any order, and it is closed, thousands of times, on
// both plug-ins of the real library. Nothing that the process owns may grow. KELVO_STORMS says how
// many.
#include <gtest/gtest.h>
#include <windows.h>

#include <tlhelp32.h>

#include <functional>
#include <random>

#include "kelvo/ogg_vorbis_input.h"
#include "kelvo/wma_input.h"
#include "tests/faults/import_faults.h"
#include "tests/pocketpc/wav_bytes.h"
#include "tests/support/end_messages.h"
#include "tests/support/loaded_library.h"
#include "tests/support/long_run.h"
#include "tests/support/media_files.h"
#include "tests/support/memory_reader.h"
#include "tests/support/owned_objects.h"
#include "tests/support/recording_output.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

struct Held {
  DWORD handles = 0, threads = 0;
  DWORD gdi = 0, user = 0;
  long blocks = 0;  // of the library's memory
};

Held Count(const test::ImportFaults& imports) {
  Held held;
  // What ends of itself is given a moment.
  Sleep(500);
  held.handles = test::Handles();
  const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  THREADENTRY32 entry = {};
  entry.dwSize = sizeof(entry);
  for (BOOL more = Thread32First(all, &entry); more; more = Thread32Next(all, &entry)) {
    held.threads += entry.th32OwnerProcessID == GetCurrentProcessId();
  }
  CloseHandle(all);
  held.gdi = test::GdiObjects();
  held.user = test::UserObjects();
  held.blocks = imports.blocks();
  return held;
}

void HandleMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}

// `storm` some times to warm up, then many times.
void Weather(const char* name, int usual, const test::ImportFaults& imports,
             const std::function<void(std::mt19937&)>& storm) {
  std::mt19937 random(1);
  for (int i = 0; i < 5 + usual / 10; ++i) storm(random);
  const Held before = Count(imports);
  test::LongRun run("KELVO_STORMS", static_cast<uint64_t>(usual));
  while (run.Next()) {
    storm(random);
    ASSERT_FALSE(testing::Test::HasFailure()) << run.done();
  }
  EXPECT_GT(run.done(), 0u);
  const Held after = Count(imports);
  printf(
      "%s: %u storms; handles %lu, then %lu; threads %lu, %lu; GDI %lu, %lu; user %lu, %lu; blocks "
      "%ld, %ld\n",
      name, static_cast<unsigned>(run.done()), before.handles, after.handles, before.threads,
      after.threads, before.gdi, after.gdi, before.user, after.user, before.blocks, after.blocks);
  EXPECT_LE(after.handles, before.handles + 10);
  EXPECT_LE(after.threads, before.threads + 1);
  EXPECT_LE(after.gdi, before.gdi + 2);
  EXPECT_LE(after.user, before.user + 2);
  EXPECT_EQ(after.blocks, before.blocks);
}

// Any of what a host can ask a plug-in with an open file.
void Control(InputPlugin& plugin, std::mt19937& random, int32_t length_ms) {
  wchar_t title[kMaxText];
  MediaInfo info = {};
  switch (random() % 7) {
    case 0:
    case 1:
      plugin.Play();
      break;
    case 2:
      plugin.TogglePause();
      break;
    case 3:
      plugin.SeekMs(static_cast<int32_t>(random() % static_cast<uint32_t>(length_ms)));
      break;
    case 4:
      plugin.Stop();
      break;
    case 5:
      EXPECT_NEAR(plugin.GetLengthMs(), length_ms, 400);
      EXPECT_GE(plugin.GetPositionMs(0, 0), 0);
      break;
    default:
      EXPECT_EQ(plugin.GetDisplayTitle(title), 1);
      plugin.GetMediaInfo(&info);
  }
  if (random() % 16 == 0) Sleep(1);
}

TEST(Storms, OfOggVorbis) {
  const test::LoadedLibrary library;
  const test::ImportFaults imports(L"");
  auto& plugin = *static_cast<OggVorbisInput*>(library.Get(kFeatureOggVorbis));
  test::MemoryReader reader(test::ReadMedia("chained.ogg"));
  test::RecordingOutput output;
  const test::EndMessages ends;
  plugin.SetReader(&reader);
  plugin.SetOutput(&output);
  plugin.SetNotifyWindow(ends.window());
  Weather("Ogg Vorbis", 100, imports, [&](std::mt19937& random) {
    ASSERT_EQ(plugin.Open(L"x.ogg", 0), 1);
    output.SetHold(random() % 2);
    for (int i = 0; i < 10; ++i) Control(plugin, random, plugin.GetLengthMs());
    output.SetHold(false);
    plugin.Stop();
    if (plugin.GetState() != kStopped) plugin.SetState(kStopped);  // sought while it drained
    ASSERT_EQ(plugin.Close(0, 0), 1);
    reader.log.clear();
    output.ClearCalls();
    ends.count();
  });
  plugin.SetNotifyWindow(nullptr);
}

TEST(Storms, OfWindowsMedia) {
  UseSink(L"silence", false);
  const test::LoadedLibrary library;
  const test::ImportFaults imports(L"");
  auto& plugin = *static_cast<WmaInput*>(library.Get(kFeatureWma));
  const test::EndMessages ends;
  plugin.SetOwnerWindow(ends.window());
  wchar_t path[MAX_PATH];
  GetFullPathNameW(test::Wide(test::MediaPath("sample.wma")), MAX_PATH, path, nullptr);
  Weather("Windows Media", 10, imports, [&](std::mt19937& random) {
    ASSERT_EQ(plugin.Open(path, 0), 1);
    for (int i = 0; i < 10; ++i) {
      Control(plugin, random, 8000);
      int16_t samples[kVisualisationSamples];
      plugin.GetVisualisation(samples);
      HandleMessages();
    }
    plugin.Close(0, 0);
    ASSERT_EQ(plugin.GetState(), kStopped);
    HandleMessages();
    ends.count();
  });
  plugin.SetOwnerWindow(nullptr);
}

}  // namespace
}  // namespace kelvo
