// The hosts of the guide, from outside: each plays a file as the decoder gives it, shows the
// bookmarks and ends when they are closed.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "tests/bookmarks/bookmark_text.h"
#include "tests/support/installation_folder.h"
#include "tests/support/media_files.h"
#include "tests/support/ogg_files.h"

namespace kelvo {
namespace {

BOOL CALLBACK CloseBookmarks(HWND window, LPARAM process) {
  DWORD owner = 0;
  wchar_t title[32] = L"";
  GetWindowThreadProcessId(window, &owner);
  if (owner != static_cast<DWORD>(process) || !IsWindowVisible(window)) return TRUE;
  GetWindowTextW(window, title, 32);
  if (wcscmp(title, L"Velmora Bookmarks") != 0) return TRUE;
  PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
  return FALSE;
}

TEST(MinimalHostsTest, PlayAFileAndShowTheBookmarks) {
  const test::InstallationFolder folder;
  SetEnvironmentVariableW(L"KELVO_AUDIO_SINK", folder.Path(L"played.wav").c_str());
  SetEnvironmentVariableW(L"KELVO_AUDIO_PACE", L"fast");
  const std::vector<char> want = test::DecodeDirectly(test::ReadMedia("sample.ogg"));
  for (const std::wstring program : {L"minimal_c.exe", L"minimal_cpp.exe"}) {
    SCOPED_TRACE(testing::Message() << program.c_str());
    std::wstring line = program + L" ..\\..\\media\\sample.ogg";
    STARTUPINFOW start = {};
    start.cb = sizeof(start);
    PROCESS_INFORMATION host = {};
    ASSERT_TRUE(CreateProcessW(program.c_str(), &line[0], nullptr, nullptr, FALSE, 0, nullptr,
                               nullptr, &start, &host));
    bool closed = false;
    while (WaitForSingleObject(host.hProcess, 50) == WAIT_TIMEOUT) {
      closed |= !EnumWindows(&CloseBookmarks, static_cast<LPARAM>(host.dwProcessId));
    }
    DWORD code = 9;
    GetExitCodeProcess(host.hProcess, &code);
    CloseHandle(host.hProcess);
    CloseHandle(host.hThread);
    EXPECT_EQ(code, 0u);
    EXPECT_TRUE(closed);
    const std::string wav = folder.Read(L"played.wav");
    ASSERT_GT(wav.size(), 44u);
    EXPECT_TRUE(wav.compare(44, std::string::npos, want.data(), want.size()) == 0);
    EXPECT_EQ(folder.Read(L"bookmarks.dat"),
              test::Utf16("..\\..\\media\\sample.ogg\r\n0\r\n"
                          "(Last Played) ..\\..\\media\\sample.ogg\r\n"));
    DeleteFileW(folder.Path(L"played.wav").c_str());
    DeleteFileW(folder.Path(L"bookmarks.dat").c_str());
  }
}

}  // namespace
}  // namespace kelvo
