// Feature 6 in the real library, every slot called by its number.
#include <gtest/gtest.h>
#include <windows.h>

#include <numeric>
#include <optional>
#include <string>

#include "kelvo/features.h"
#include "kelvo/wma_input.h"
#include "tests/pocketpc/wav_bytes.h"
#include "tests/support/end_messages.h"
#include "tests/support/loaded_library.h"
#include "tests/support/media_files.h"
#include "tests/support/memory_reader.h"
#include "tests/support/raw_slot.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::CallSlot;
using test::LoadedLibrary;
using test::MediaPath;
using test::Wide;

bool OpenSample(void* plugin) {
  wchar_t path[MAX_PATH];
  GetFullPathNameW(Wide(MediaPath("sample.wma")), MAX_PATH, path, nullptr);
  return CallSlot<int32_t>(plugin, 14, static_cast<const wchar_t*>(path), 0u) != 0;
}

double Mean(const std::vector<int16_t>& samples) {
  return std::accumulate(samples.begin(), samples.end(), 0.0) / static_cast<double>(samples.size());
}

TEST(WmaLibraryTest, PlaysThroughFeature9LoadAfterLoad) {
  test::EndMessages messages;
  // As it starts; switched off in the next load.
  for (const bool equalizer : {true, false}) {
    SCOPED_TRACE(equalizer);
    const wchar_t* const recording = equalizer ? L"wma_library.wav" : L"wma_library_off.wav";
    UseSink(recording, true);
    {
      const LoadedLibrary library;
      void* const plugin = library.Get(kFeatureWma);
      void* const effects = library.Get(kFeatureEffects);
      ASSERT_TRUE(plugin && effects);
      EXPECT_EQ(library.Get(kFeatureWma), plugin);
      if (!equalizer) CallSlot<void>(effects, 3, 0);
      CallSlot<void>(plugin, 18, messages.window());
      ASSERT_TRUE(OpenSample(plugin));
      ASSERT_EQ(CallSlot<int32_t>(plugin, 12), 1);
      EXPECT_EQ(CallSlot<uint32_t>(plugin, 6), 2u);
      messages.WaitForNext();
      EXPECT_EQ(CallSlot<int32_t>(plugin, 10), 0);
      EXPECT_EQ(CallSlot<uint32_t>(plugin, 6), 1u);
      int16_t samples[kVisualisationSamples];
      EXPECT_EQ(CallSlot<int32_t>(plugin, 16, static_cast<int16_t*>(samples)), 1);
    }
    EXPECT_EQ(GetModuleHandleW(L"Kelvo.dll"), nullptr);
    const WavBytes heard = ReadWav(recording);
    ASSERT_TRUE(heard.ok);
    EXPECT_GT(heard.samples.size(), 600000u);
    EXPECT_NEAR(Mean(heard.samples), equalizer ? 12500 : 0, 200);
    DeleteFileW(recording);
  }
  EXPECT_EQ(messages.count(), 0);
}

// What happens in a process of its own, which ends with kDone.
constexpr wchar_t kScenario[] = L"KELVO_TEST_SCENARIO";
constexpr UINT kDone = 42;

void Require(bool holds, UINT code) {
  if (!holds) TerminateProcess(GetCurrentProcess(), code);
}

// Loads the library and plays in it.
void PlayIn(std::optional<LoadedLibrary>& library) {
  library.emplace();
  void* const plugin = library->Get(kFeatureWma);
  Require(plugin && OpenSample(plugin) && CallSlot<int32_t>(plugin, 12) == 1, 1);
  while (CallSlot<int32_t>(plugin, 4, HostWord{0}, HostWord{0}) == 0) Sleep(10);
}

DWORD RecordedBytes() {
  WIN32_FILE_ATTRIBUTE_DATA data = {};
  GetFileAttributesExW(L"wma_child.wav", GetFileExInfoStandard, &data);
  return data.nFileSizeLow;
}

// On a thread with an apartment of its own, which it keeps.
DWORD WINAPI Unload(void* library) {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  static_cast<std::optional<LoadedLibrary>*>(library)->reset();
  Require(CoInitializeEx(nullptr, COINIT_MULTITHREADED) == RPC_E_CHANGED_MODE, 5);
  CoUninitialize();
  return 0;
}

BOOL CALLBACK SendOne(HWND window, LPARAM) {
  SendMessageW(window, WM_USER, 0, 0);
  return TRUE;
}

BOOL CALLBACK IsNotOurs(HWND window, LPARAM) {
  wchar_t name[20];
  GetClassNameW(window, name, 20);
  return wcscmp(name, L"VLWMAPlayer") != 0;
}

// With an Ogg file that is still open as well, whose reader is gone by then.
void EndTheProcess() {
  struct GoneReader : test::MemoryReader {
    using MemoryReader::MemoryReader;
    int32_t Close() noexcept override {
      Require(false, 6);
      return 0;
    }
  };
  std::optional<LoadedLibrary> library;
  PlayIn(library);
  static GoneReader reader(test::ReadMedia("tone_44100_mono.ogg"));
  auto* const ogg = static_cast<InputPlugin*>(library->Get(kFeatureOggVorbis));
  ogg->SetReader(&reader);
  Require(CallSlot<int32_t>(ogg, 14, L"x", 0u) == 1, 7);
  ExitProcess(kDone);
}

void UnloadHere() {
  std::optional<LoadedLibrary> library;
  for (int round = 0; round < 2; ++round) {
    PlayIn(library);
    library.reset();
    Require(!GetModuleHandleW(L"Kelvo.dll"), 2);
  }
}

void UnloadOnAnotherThread() {
  std::optional<LoadedLibrary> library;
  for (int round = 0; round < 2; ++round) {
    PlayIn(library);
    const HANDLE thread = CreateThread(nullptr, 0, &Unload, &library, 0, nullptr);
    Require(WaitForSingleObject(thread, 60000) == WAIT_OBJECT_0, 2);
    CloseHandle(thread);
    Require(!GetModuleHandleW(L"Kelvo.dll"), 3);
    EnumThreadWindows(GetCurrentThreadId(), &SendOne, 0);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    Require(EnumThreadWindows(GetCurrentThreadId(), &IsNotOurs, 0), 8);
    const DWORD bytes = RecordedBytes();
    Sleep(500);
    Require(bytes > 0 && RecordedBytes() == bytes, 4);  // nothing plays on
  }
}

TEST(WmaLibraryTest, MayGoWhilePlaying) {
  const struct {
    const char* name;
    void (*run)();
  } kScenarios[] = {{"the process ends", &EndTheProcess},
                    {"unloaded", &UnloadHere},
                    {"unloaded on another thread", &UnloadOnAnotherThread}};
  wchar_t number[8];
  if (GetEnvironmentVariableW(kScenario, number, 8) != 0) {
    UseSink(L"wma_child.wav", false);
    kScenarios[number[0] - L'0'].run();
    TerminateProcess(GetCurrentProcess(), kDone);
  }
  wchar_t program[MAX_PATH];
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  for (const auto& scenario : kScenarios) {
    SCOPED_TRACE(scenario.name);
    SetEnvironmentVariableW(kScenario, std::to_wstring(&scenario - kScenarios).c_str());
    std::wstring command = L"wma_tests --gtest_filter=*MayGoWhilePlaying";
    STARTUPINFOW start = {};
    start.cb = sizeof(start);
    PROCESS_INFORMATION child = {};
    ASSERT_TRUE(CreateProcessW(program, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                               nullptr, &start, &child));
    DWORD code = 0;
    EXPECT_EQ(WaitForSingleObject(child.hProcess, 120000), WAIT_OBJECT_0) << "it hangs";
    GetExitCodeProcess(child.hProcess, &code);
    EXPECT_EQ(code, kDone);
    TerminateProcess(child.hProcess, 0);
    CloseHandle(child.hThread);
    CloseHandle(child.hProcess);
  }
  SetEnvironmentVariableW(kScenario, nullptr);
  DeleteFileW(L"wma_child.wav");
  DeleteFileW(L"wma_child-2.wav");
}

}  // namespace
}  // namespace kelvo
