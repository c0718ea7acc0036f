#include "input/wma/output_redirection.h"

#include <gtest/gtest.h>
#include <mmsystem.h>

#include <string>
#include <vector>

namespace kelvo {
namespace {

constexpr size_t kPage = 4096;
constexpr int kWordsOnPage = kPage / sizeof(void*);

int g_from, g_to;
void* const kFrom = &g_from;
void* const kTo = &g_to;

class Pages {
 public:
  explicit Pages(size_t count) : count_(count) {
    words_ = static_cast<void**>(
        VirtualAlloc(nullptr, count * kPage, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
  }
  ~Pages() { VirtualFree(words_, 0, MEM_RELEASE); }
  void Protect(size_t page, DWORD protection) {
    DWORD old;
    EXPECT_TRUE(VirtualProtect(words_ + page * kWordsOnPage, kPage, protection, &old));
  }
  DWORD Protection(size_t page) {
    MEMORY_BASIC_INFORMATION info = {};
    VirtualQuery(words_ + page * kWordsOnPage, &info, sizeof(info));
    return info.Protect;
  }
  void** words() const { return words_; }

 private:
  size_t count_;
  void** words_;
};

TEST(ReplaceWordsTest, ReplacesEveryMatchWithinItsReach) {
  const size_t pages = kScanWords / kWordsOnPage + 2;
  Pages memory(pages);
  const struct {
    const char* name;
    int word;
    bool reached;
  } kCases[] = {
      {"the first word", 0, true},
      {"its neighbour", 1, true},
      {"the last of a page", kWordsOnPage - 1, true},
      {"on a page that is only read", 3 * kWordsOnPage + 5, true},
      {"on a page of code", 4 * kWordsOnPage, true},
      {"the last word in reach", kScanWords - 1, true},
      {"one behind", kScanWords, false},
  };
  for (const auto& c : kCases) memory.words()[c.word] = kFrom;
  memory.words()[100] = static_cast<char*>(kFrom) + 1;
  memory.Protect(3, PAGE_READONLY);
  memory.Protect(4, PAGE_EXECUTE_READ);
  void* replaced = nullptr;
  EXPECT_EQ(ReplaceWords(memory.words(), kFrom, kTo, &replaced), 6);
  EXPECT_EQ(replaced, kFrom);
  for (const auto& c : kCases) {
    EXPECT_EQ(memory.words()[c.word], c.reached ? kTo : kFrom) << c.name;
  }
  EXPECT_EQ(memory.words()[100], static_cast<char*>(kFrom) + 1);
  EXPECT_EQ(memory.Protection(3), DWORD{PAGE_READONLY});
  EXPECT_EQ(memory.Protection(4), DWORD{PAGE_EXECUTE_READ});
}

TEST(ReplaceWordsTest, StopsAtTheFirstUnreadableWord) {
  Pages memory(3);
  memory.words()[0] = memory.words()[2 * kWordsOnPage] = kFrom;
  memory.Protect(1, PAGE_NOACCESS);
  EXPECT_EQ(ReplaceWords(memory.words(), kFrom, kTo, nullptr), 1);
  EXPECT_EQ(memory.words()[2 * kWordsOnPage], kFrom);
  void* replaced = nullptr;
  EXPECT_EQ(ReplaceWords(memory.words() + kWordsOnPage, kFrom, kTo, &replaced), 0);
  EXPECT_EQ(ReplaceWords(nullptr, kFrom, kTo, &replaced), 0);
  EXPECT_EQ(replaced, nullptr);
}

// The library may lie behind the component, with what it remembers.
TEST(ReplaceWordsTest, LeavesTheRememberedWordAlone) {
  void* words[3] = {kFrom, nullptr, kFrom};
  const Pages unreadable(1);
  EXPECT_EQ(ReplaceWords(words, kFrom, kTo, &words[1]), 2);
  EXPECT_EQ(words[1], kFrom);
}

// Writes its name into the log and over the first sample.
class LoggingEffects final : public EffectsProcessor {
 public:
  std::string log;
  void Destroy(uint32_t) noexcept override {}
  void SetBassMode(int32_t) noexcept override {}
  void EnableEqualizer(int32_t) noexcept override {}
  void SetEqualizer(int32_t, const int32_t*) noexcept override {}
  void ProcessBass(int16_t** samples, int32_t bytes) noexcept override { Log("b", samples, bytes); }
  int32_t ProcessEqualizer(int16_t** samples, int32_t bytes) noexcept override {
    Log("e", samples, bytes);
    return 0;
  }

 private:
  void Log(const char* stage, int16_t** samples, int32_t bytes) {
    log += stage + std::to_string(bytes) + " ";
    if (*samples) **samples = static_cast<int16_t>(**samples * 10 + (*stage == 'e' ? 1 : 2));
  }
};

TEST(OutputTapTest, ProcessesStoresAndHandsOnOnceItFoundModuleAnchorAndFunction) {
  HMODULE const player = LoadLibraryW(L"WMPCmn.dll");
  HMODULE const core = GetModuleHandleW(L"coredll.dll");
  HMODULE const other = GetModuleHandleW(L"kernel32.dll");
  ASSERT_TRUE(player && core);
  LoggingEffects effects;
  AudioTap tap;
  int16_t samples[4] = {5, 6, 7, 8};
  WAVEHDR block = {};
  block.lpData = reinterpret_cast<char*>(samples);
  block.dwBufferLength = sizeof(samples);
  const struct {
    const char* name;
    HMODULE player, core;
  } kMissing[] = {
      {"no component", nullptr, core},
      {"component without the export", other, core},
      {"no core", player, nullptr},
      {"core without waveOutWrite", player, other},
  };
  for (const auto& c : kMissing) {
    EXPECT_FALSE(InstallOutputTap(c.player, c.core, &effects, &tap)) << c.name;
    EXPECT_EQ(TappedWaveOutWrite(nullptr, &block, sizeof(block)), 6u) << c.name;
  }
  EXPECT_EQ(effects.log, "");

  ASSERT_TRUE(InstallOutputTap(player, core, &effects, &tap));
  // There is no such device: the result is the original's.
  EXPECT_EQ(TappedWaveOutWrite(nullptr, &block, 0), UINT{waveOutWrite(nullptr, &block, 0)});
  EXPECT_EQ(effects.log, "e8 b8 ");
  int16_t stored[kVisualisationSamples];
  EXPECT_TRUE(tap.Read(stored));
  EXPECT_EQ(stored[0], 512) << "after both stages";
  EXPECT_EQ(stored[1], 7);
  block.lpData = nullptr;
  TappedWaveOutWrite(nullptr, &block, 0);
  TappedWaveOutWrite(nullptr, nullptr, 0);
  EXPECT_EQ(effects.log, "e8 b8 e8 b8 ");

  RestoreOutput(player);
  ForgetOutputTap();
  EXPECT_EQ(TappedWaveOutWrite(nullptr, &block, 0), 6u) << "the original is forgotten";
  EXPECT_TRUE(InstallOutputTap(player, core, &effects, &tap));
  EXPECT_NE(TappedWaveOutWrite(nullptr, &block, 0), 6u) << "its slots had been restored";
  RestoreOutput(player);
  ForgetOutputTap();
  FreeLibrary(player);
}

}  // namespace
}  // namespace kelvo
