#include "host/check/report.h"

#include <windows.h>

#include <atomic>
#include <thread>

#include "host/command.h"

namespace velmora::check {
namespace {

constexpr ULONGLONG kPatienceMs = 60000;

const char* g_subject = "loading";
std::atomic<ULONGLONG> g_last_line{0};

[[noreturn]] void GiveUp(const char* what) {
  velmora::Print(L"FAILED  %hs: %hs\n", g_subject, what);
  ExitProcess(3);
}

LONG WINAPI OnCrash(EXCEPTION_POINTERS* crash) {
  char what[64];
  wsprintfA(what, "it crashed (%08lX)", crash->ExceptionRecord->ExceptionCode);
  GiveUp(what);
}

}  // namespace

void Report::Guard() {
  g_last_line = GetTickCount64();
  SetUnhandledExceptionFilter(&OnCrash);
  std::thread([] {
    while (GetTickCount64() - g_last_line < kPatienceMs) Sleep(100);
    GiveUp("it does not come to an end");
  }).detach();
}

void Report::Begin(const char* subject) {
  g_subject = subject;
  velmora::Print(L"%hs\n", subject);
}

void Report::Print(const char* mark, const std::string& text) {
  g_last_line = GetTickCount64();
  velmora::Print(L"  %-8hs%hs\n", mark, text.c_str());
}

void Report::Says(const std::string& sentence, bool holds) {
  ++(holds ? held_ : failed_);
  Print(holds ? "ok" : "FAILED", sentence);
}

void Report::LeavesOut(const std::string& what) {
  ++left_out_;
  Print("-", what);
}

int Report::End() const {
  velmora::Print(L"%d sentences hold, %d FAILED, %d left out\n", held_, failed_, left_out_);
  return failed_ != 0;
}

}  // namespace velmora::check
