// Feature 6 in the real library, every slot called by its number.
#include <gtest/gtest.h>
#include <windows.h>

#include <numeric>
#include <string>

#include "kelvo/features.h"
#include "kelvo/wma_input.h"
#include "tests/pocketpc/wav_bytes.h"
#include "tests/support/end_messages.h"
#include "tests/support/loaded_library.h"
#include "tests/support/media_files.h"
#include "tests/support/raw_slot.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::CallSlot;
using test::LoadedLibrary;

bool OpenSample(void* plugin) {
  wchar_t path[MAX_PATH];
  GetFullPathNameW(test::Wide(test::MediaPath("sample.wma")), MAX_PATH, path, nullptr);
  return CallSlot<int32_t>(plugin, 14, static_cast<const wchar_t*>(path), 0u) != 0;
}

double Mean(const std::vector<int16_t>& samples) {
  return std::accumulate(samples.begin(), samples.end(), 0.0) / static_cast<double>(samples.size());
}

TEST(WmaLibraryTest, PlaysThroughFeature9LoadAfterLoad) {
  const struct {
    const char* name;
    const wchar_t* recording;
    int32_t equalizer;
    double mean;
  } kLoads[] = {
      {"equalizer on, as it starts", L"wma_library.wav", 1, 12500},
      {"switched off, in the next load", L"wma_library_off.wav", 0, 0},
  };
  test::EndMessages messages;
  for (const auto& load : kLoads) {
    SCOPED_TRACE(load.name);
    UseSink(load.recording, true);
    {
      const LoadedLibrary library;
      void* const plugin = library.Get(kFeatureWma);
      void* const effects = library.Get(kFeatureEffects);
      ASSERT_TRUE(plugin && effects);
      EXPECT_EQ(library.Get(kFeatureWma), plugin);
      if (!load.equalizer) CallSlot<void>(effects, 3, 0);
      CallSlot<void>(plugin, 18, messages.window());
      ASSERT_TRUE(OpenSample(plugin));
      ASSERT_EQ(CallSlot<int32_t>(plugin, 12), 1);
      EXPECT_EQ(CallSlot<uint32_t>(plugin, 6), 2u);
      messages.WaitForNext();
      EXPECT_EQ(CallSlot<int32_t>(plugin, 10), 0);
      EXPECT_EQ(CallSlot<uint32_t>(plugin, 6), 1u);
      int16_t samples[kVisualisationSamples];
      EXPECT_EQ(CallSlot<int32_t>(plugin, 16, static_cast<int16_t*>(samples)), 1);
      EXPECT_EQ(CallSlot<int32_t>(plugin, 7) + CallSlot<int32_t>(plugin, 8), 0);
    }
    EXPECT_EQ(GetModuleHandleW(L"Kelvo.dll"), nullptr);
    const WavBytes heard = ReadWav(load.recording);
    ASSERT_TRUE(heard.ok);
    EXPECT_GT(heard.samples.size(), 600000u);
    EXPECT_NEAR(Mean(heard.samples), load.mean, 200);
    DeleteFileW(load.recording);
  }
  EXPECT_EQ(messages.count(), 0);
}

constexpr wchar_t kChild[] = L"KELVO_TEST_CHILD";

// The process ends under the library while it plays.
[[noreturn]] void EndWhilePlaying() {
  UseSink(L"wma_child.wav", false);
  const LoadedLibrary library;
  void* const plugin = library.Get(kFeatureWma);
  if (!plugin || !OpenSample(plugin) || !CallSlot<int32_t>(plugin, 12)) ExitProcess(1);
  while (CallSlot<int32_t>(plugin, 4, HostWord{0}, HostWord{0}) == 0) Sleep(10);
  ExitProcess(42);
}

TEST(WmaLibraryTest, LetsTheProcessEndWhilePlaying) {
  if (GetEnvironmentVariableW(kChild, nullptr, 0) != 0) EndWhilePlaying();
  SetEnvironmentVariableW(kChild, L"1");
  wchar_t program[MAX_PATH];
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  wchar_t command[2 * MAX_PATH];
  swprintf(command, 2 * MAX_PATH, L"\"%ls\" --gtest_filter=*LetsTheProcessEndWhilePlaying",
           program);
  STARTUPINFOW start = {};
  start.cb = sizeof(start);
  PROCESS_INFORMATION child = {};
  ASSERT_TRUE(CreateProcessW(program, command, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                             &child));
  DWORD code = 0;
  EXPECT_EQ(WaitForSingleObject(child.hProcess, 120000), WAIT_OBJECT_0) << "it hangs";
  GetExitCodeProcess(child.hProcess, &code);
  EXPECT_EQ(code, 42u);
  TerminateProcess(child.hProcess, 0);
  SetEnvironmentVariableW(kChild, nullptr);
  CloseHandle(child.hThread);
  CloseHandle(child.hProcess);
  DeleteFileW(L"wma_child.wav");
}

}  // namespace
}  // namespace kelvo
