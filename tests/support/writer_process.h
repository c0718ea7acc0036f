// A process that writes files until it is killed, or until the test's own ends.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#ifdef _WIN32
#include <windows.h>
#else
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace kelvo::test {

// How many writers a test kills: as many as KELVO_KILLED_WRITERS says, else `usual`.
inline int KilledWriters(int usual) {
  const char* number = getenv("KELVO_KILLED_WRITERS");
  return number ? atoi(number) : usual;
}

#ifdef _WIN32

// This program again with the running test alone, which comes to the same place.
class WriterProcess {
 public:
  static constexpr int kUsual = 10;  // starting one takes long
  static bool IsThis() { return GetEnvironmentVariableW(kIsWriter, nullptr, 0) != 0; }
  template <class Write>
  explicit WriterProcess(Write write) {
    if (IsThis()) write();
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    std::string filter = std::string(test.test_suite_name()) + "." + test.name();
    std::wstring command = L"\"" + std::wstring(program) + L"\" --gtest_filter=" +
                           std::wstring(filter.begin(), filter.end());
    SetEnvironmentVariableW(kIsWriter, L"1");
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    CreateProcessW(program, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                   &process_);
    SetEnvironmentVariableW(kIsWriter, nullptr);
  }
  void KillAfter(int microseconds) {
    Sleep(static_cast<DWORD>(200 + microseconds / 100));
    TerminateProcess(process_.hProcess, 1);
    WaitForSingleObject(process_.hProcess, INFINITE);
    CloseHandle(process_.hProcess);
    CloseHandle(process_.hThread);
  }

 private:
  static constexpr wchar_t kIsWriter[] = L"KELVO_TEST_WRITER";
  PROCESS_INFORMATION process_ = {};
};

#else

class WriterProcess {
 public:
  static constexpr int kUsual = 40;
  static bool IsThis() { return false; }
  template <class Write>
  explicit WriterProcess(Write write) : process_(fork()) {
    if (process_ != 0) return;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    write();
  }
  void KillAfter(int microseconds) {
    usleep(static_cast<useconds_t>(microseconds));
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }

 private:
  pid_t process_;
};

// While it lives, no file grows beyond this.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(size_t bytes) {
    signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &before_);
    rlimit limit = before_;
    limit.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &before_); }

 private:
  rlimit before_;
};

#endif

}  // namespace kelvo::test
