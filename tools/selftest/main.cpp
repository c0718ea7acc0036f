// Looks at the Kelvo.dll beside it, on the machine it is to run on, and writes what it found into
// "Kelvo report.txt" beside both: versions, checks, times. With any argument it opens no window.
// The exit code is the number of faults.
#include <windows.h>

#include "tools/selftest/checks.h"
#include "tools/selftest/report.h"

namespace kelvo::selftest {
namespace {

constexpr size_t kPathCapacity = 260;
constexpr wchar_t kReportName[] = L"Kelvo report.txt";

// Too large for the device's stack.
Report g_report;
wchar_t g_folder[kPathCapacity];  // with a backslash at its end
wchar_t g_path[kPathCapacity];

void FindFolder() noexcept {
  DWORD length = GetModuleFileNameW(nullptr, g_folder, kPathCapacity);
  while (length > 0 && g_folder[length - 1] != L'\\') --length;
  g_folder[length] = 0;
}

// The path of a name in that folder, in `g_path`; false when it is too long.
bool InFolder(const wchar_t* name) noexcept {
  size_t at = 0;
  for (; g_folder[at] != 0; ++at) g_path[at] = g_folder[at];
  for (; *name != 0; ++name) {
    if (at == kPathCapacity - 1) return false;
    g_path[at++] = *name;
  }
  g_path[at] = 0;
  return true;
}

void LookAtLibrary() noexcept {
  const HMODULE library = InFolder(L"Kelvo.dll") ? LoadLibraryW(g_path) : nullptr;
  if (!library) {
    const auto error = static_cast<uint32_t>(GetLastError());
    g_report.Check(false, "Kelvo.dll cannot be loaded from beside this program; error ", error);
    return;
  }
  const auto get_feature = reinterpret_cast<GetFeatureFunction>(
      reinterpret_cast<void*>(GetProcAddress(library, "GetFeature")));
  g_report.Check(get_feature != nullptr, g_path);
  if (get_feature) {
    CheckFeatures(get_feature, g_report);
    CheckFiles(get_feature, g_folder, g_report);
    CheckDecodingAndTime(get_feature, g_report);
    CheckEffectsAndTime(get_feature, g_report);
  }
  g_report.Check(FreeLibrary(library) != 0, "unloaded");
}

bool WriteReport() noexcept {
  if (!InFolder(kReportName)) return false;
  const HANDLE file =
      CreateFileW(g_path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  DWORD written = 0;
  const auto bytes = static_cast<DWORD>(g_report.length());
  const bool whole = WriteFile(file, g_report.text(), bytes, &written, nullptr) && written == bytes;
  CloseHandle(file);
  return whole;
}

}  // namespace

int Run(bool is_quiet) noexcept {
  FindFolder();
  g_report.Line("Kelvo self-test");
  DescribeSystem(g_report);
  LookAtLibrary();
  const auto faults = static_cast<uint32_t>(g_report.faults());
  if (faults == 0) {
    g_report.Line("All is as it should be.");
  } else {
    g_report.Line(faults, " of these are wrong.");
  }
  const bool is_written = WriteReport();
  if (!is_quiet) {
    MessageBoxW(nullptr,
                is_written ? L"The report is in \"Kelvo report.txt\" beside this program."
                           : L"The report cannot be written beside this program.",
                L"Kelvo self-test", MB_OK);
  }
  return static_cast<int>(faults) + !is_written;
}

}  // namespace kelvo::selftest

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR arguments, int) {
  return kelvo::selftest::Run(arguments && arguments[0] != 0);
}
