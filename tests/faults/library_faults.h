// Every call that Kelvo.dll makes of the system fails once, in every operation of every feature:
// the operation returns, what it uses is given back, and the next time it does all that it did
// before. KELVO_FAULTS_EACH says that each n-th of them is tried; 1 is all.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <optional>

#include "tests/faults/import_faults.h"
#include "tests/faults/windows_user.h"
#include "tests/support/faults.h"
#include "tests/support/id3v1_tag.h"
#include "tests/support/installation_folder.h"
#include "tests/support/language_value.h"
#include "tests/support/loaded_library.h"
#include "tests/support/media_files.h"
#include "tests/support/owned_objects.h"

namespace kelvo::test {

class LibraryFaults : public ::testing::Test {
 protected:
  static constexpr DWORD kEnglish = 1033, kGerman = 0x0407;

  LibraryFaults() { WriteFiles(); }
  ~LibraryFaults() override {
    DestroyWindow(parent_);
    FreeLibrary(host_);
  }

  void WriteFiles() const {
    folder_.Write(L"one.mp3", "x" + Id3v1Tag("One", "Sine", "Waves", 8));
    folder_.Write(L"two.ogg", Bytes("sample.ogg"));
    folder_.Write(L"three.wma", Bytes("sample.wma").substr(0, 8000));
    folder_.Write(L"list.m3u", "#EXTM3U\r\n\\one.mp3\r\n\\two.ogg\r\n");
  }
  static std::string Bytes(const char* name) {
    const std::vector<char> bytes = ReadMedia(name);
    return {bytes.begin(), bytes.end()};
  }
  void SwitchTo(DWORD language) {
    language_.Set(language);
    library_->Get(kFeatureSwitchLanguage);
  }
  // Unloads the library and loads it anew.
  void Reload() {
    library_.reset();
    library_.emplace();
  }
  template <class Feature>
  Feature& Get(int32_t id) const {
    return *static_cast<Feature*>(library_->Get(id));
  }
  // What the library holds, and the windows of this thread.
  std::string Held() const {
    DWORD windows = 0;
    EnumThreadWindows(GetCurrentThreadId(), &CountWithChildren, reinterpret_cast<LPARAM>(&windows));
    return faults_.Held() + ", windows " + std::to_string(windows);
  }

  // Calls of `run` fail, none of `before`. What it has come to is the same each time when nothing
  // fails.
  void Sweep(
      const std::function<std::string()>& run, const std::function<void()>& before = [] {}) {
    const long step = FaultStep(kUsualStep);
    const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    long first = 0;  // where the usual steps start, in each test elsewhere
    for (const char c : name) first += c;
    const auto run_whole = [&] {
      before();
      return run();
    };
    run_whole();
    const std::string want = run_whole();
    const std::string held = Held();
    const DWORD handles = Handles();
    int misses = 0;
    long tried = test::Sweep([&](long n) {
      before();
      faults_.Arm(first % step + n * step);
      run();
      const char* const failed = faults_.Disarm();
      SCOPED_TRACE(failed ? failed : "nothing");
      EXPECT_EQ(run_whole(), want);
      EXPECT_EQ(Held(), held);
      misses = failed ? 0 : misses + 1;
      return misses < last_misses_ && !HasFailure();
    });
    tried -= last_misses_ - 1;
    g_fault_count.faults -= last_misses_ - 1;
    if (step == 1) printf("%ld faults in %s\n", tried, name.c_str());
    EXPECT_LE(Handles(), handles + 5 + others_handles_ * static_cast<DWORD>(tried));
  }

  int last_misses_ = 1;       // after which nothing is left: more where threads make calls
  DWORD others_handles_ = 0;  // that others leave behind with each call tried
  LanguageValue language_;
  const InstallationFolder folder_;
  ImportFaults faults_{folder_.path()};
  std::optional<LoadedLibrary> library_{std::in_place};
  const HMODULE host_ = LoadLibraryW(L"velmora.exe");
  const HWND parent_ =
      CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 240, 320, nullptr, nullptr, nullptr, nullptr);

 private:
  static constexpr long kUsualStep = 47;
};

}  // namespace kelvo::test
