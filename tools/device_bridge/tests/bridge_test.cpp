// The bridge with a small library of the device behind it (tools/device/fixture/probe.cpp): what
// the chain from compiler to loader promises, and that it lets nothing pass that the device would
// not.
#include <gtest/gtest.h>
#include <windows.h>

#include <stdint.h>
#include <tlhelp32.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "base/windows/player_control.h"
#include "kelvo/ogg_vorbis_input.h"
#include "tests/support/media_files.h"
#include "tests/support/memory_reader.h"

namespace kelvo {

// An object of a host in the convention of components: the object is the first argument.
struct HostSeek {
  const void* const* table;
  uint32_t low, high, origin;
};

// The library's, so not in the unnamed namespace.
class Probe {
 public:
  virtual const char* GetTrace() noexcept = 0;
  virtual int32_t SeekScaled(HostSeek* host, uint32_t low, uint32_t high) noexcept = 0;
  virtual int32_t JumpOut(int32_t depth) noexcept = 0;
  virtual uint32_t ThreadSlot(uint32_t value) noexcept = 0;
  virtual uint64_t Divide(uint32_t low, uint32_t high, uint32_t by) noexcept = 0;
  virtual uint32_t Event(uint32_t set) noexcept = 0;
  virtual uint32_t List(const wchar_t* pattern, wchar_t* names, uint32_t capacity) noexcept = 0;
  virtual uint32_t ReadTail(const wchar_t* path, void* bytes, uint32_t offset) noexcept = 0;
  virtual int32_t PutPosition(void* control, int32_t milliseconds) noexcept = 0;
  virtual uint32_t Fault(uint32_t kind) noexcept = 0;
};

namespace {

int64_t __stdcall Seek(HostSeek* host, uint32_t low, uint32_t high, uint32_t origin) {
  host->low = low;
  host->high = high;
  host->origin = origin;
  return 0x180000000;
}

double g_seconds;

int32_t __stdcall PutSeconds(void* control, double seconds) {
  g_seconds = seconds;
  return control ? 5 : -1;
}

template <class Function>
Function Find(HMODULE module, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

using GetFeatureFunction = Probe*(__cdecl*)(int32_t);

Probe* GetProbe(HMODULE module) {
  return Find<GetFeatureFunction>(module, "GetFeature")(1);
}

void WriteAll(const std::string& name, const std::string& bytes) {
  std::ofstream(name, std::ios::binary) << bytes;
}

std::string ReadAll(const std::string& name) {
  std::ifstream stream(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(BridgeTest, PassesArgumentsAndResultsAsTheDeviceDoes) {
  const HMODULE module = LoadLibraryA("probe.dll");
  ASSERT_TRUE(module);
  Probe* const probe = GetProbe(module);
  EXPECT_STREQ(probe->GetTrace(), "abc+") << "constructors come before the attach handler";
  const void* const table[] = {nullptr, reinterpret_cast<const void*>(&Seek)};
  HostSeek host = {table, 0, 0, 0};
  EXPECT_EQ(probe->SeekScaled(&host, 0x23456789, 0xFFFFFFFE), INT32_MAX)
      << "0x180000000 * 1000 / 3";
  EXPECT_EQ(host.low, 0x23456789u);
  EXPECT_EQ(host.high, 0xFFFFFFFEu);
  EXPECT_EQ(host.origin, 2u);
  const void* methods[kPlayerPutPosition + 1] = {};
  methods[kPlayerPutPosition] = reinterpret_cast<const void*>(&PutSeconds);
  const void* const* control = methods;
  for (const int32_t ms : {1500, -3, 2147483647}) {
    EXPECT_EQ(probe->PutPosition(&control, ms), 5);
    EXPECT_EQ(g_seconds, ms * 0.001) << "both halves, in their order";
  }
  EXPECT_EQ(probe->JumpOut(1), 7);
  EXPECT_EQ(probe->JumpOut(200), 7);
  EXPECT_EQ(probe->ThreadSlot(0x1234), 0x1234u);
  EXPECT_EQ(probe->Divide(5, 0x7000003, 7), ((uint64_t{0x7000003} << 32) + 5) / 7)
      << "64 bits come back";
  EXPECT_EQ(probe->Event(1), static_cast<uint32_t>(WAIT_OBJECT_0));
  EXPECT_EQ(probe->Event(0), static_cast<uint32_t>(WAIT_TIMEOUT));
  FreeLibrary(module);
}

TEST(BridgeTest, ReadsFoldersInTheDevicesLayout) {
  const HMODULE module = LoadLibraryA("probe.dll");
  ASSERT_TRUE(module);
  Probe* const probe = GetProbe(module);
  CreateDirectoryA("probe_files", nullptr);
  CreateDirectoryA("probe_files\\four.ogg", nullptr);
  WriteAll("probe_files\\one.ogg", "12345");
  WriteAll("probe_files\\two.mp3", "123456789");
  wchar_t names[64];
  EXPECT_EQ(probe->List(L"probe_files\\*.ogg", names, 64), 2u);
  EXPECT_TRUE(std::wstring(names) == L"four.ogg/,one.ogg," ||
              std::wstring(names) == L"one.ogg,four.ogg/,");
  char bytes[16] = {};
  EXPECT_EQ(probe->ReadTail(L"probe_files\\two.mp3", bytes, 2), 7u);
  EXPECT_STREQ(bytes, "3456789");
  EXPECT_EQ(probe->ReadTail(L"probe_files\\no.mp3", bytes, 0), 0xFFFFFFFFu);
  FreeLibrary(module);
}

// What this process has.
struct Footprint {
  size_t reserved_kb = 0;
  DWORD handles = 0;
  int threads = 0, windows = 0;

  Footprint() {
    MEMORY_BASIC_INFORMATION memory;
    for (char* at = nullptr; VirtualQuery(at, &memory, sizeof(memory)) != 0;
         at = static_cast<char*>(memory.BaseAddress) + memory.RegionSize) {
      if (memory.State != MEM_FREE) reserved_kb += memory.RegionSize / 1024;
    }
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    THREADENTRY32 thread = {};
    thread.dwSize = sizeof(thread);
    const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    for (BOOL more = Thread32First(all, &thread); more; more = Thread32Next(all, &thread)) {
      threads += thread.th32OwnerProcessID == GetCurrentProcessId();
    }
    CloseHandle(all);
    for (const HWND parent : {HWND{nullptr}, HWND_MESSAGE}) {
      for (HWND next = nullptr;
           (next = FindWindowExW(parent, next, nullptr, nullptr)) != nullptr;) {
        DWORD owner = 0;
        GetWindowThreadProcessId(next, &owner);
        windows += owner == GetCurrentProcessId();
      }
    }
  }
};

DWORD WINAPI UseProbe(void* probe) {
  return static_cast<Probe*>(probe)->ThreadSlot(5);
}

// The probe with a thread of its own; the library with its hidden window.
TEST(BridgeTest, LeavesNothingWhenItIsUnloaded) {
  for (const char* name : {"probe.dll", "Kelvo.dll"}) {
    Footprint kept;
    for (int round = 0; round < 7; ++round) {
      const HMODULE module = LoadLibraryA(name);
      ASSERT_TRUE(module);
      if (name[0] == 'p') {
        const HANDLE thread = CreateThread(nullptr, 0, &UseProbe, GetProbe(module), 0, nullptr);
        WaitForSingleObject(thread, INFINITE);
        CloseHandle(thread);
      }
      FreeLibrary(module);
      ASSERT_FALSE(GetModuleHandleA(name));
      const Footprint now;
      if (round <= 3) kept = now;  // the first rounds fill the system's caches
      EXPECT_LE(now.reserved_kb, kept.reserved_kb + 256) << name << round;
      EXPECT_LE(now.handles, kept.handles) << name << round;
      EXPECT_LE(now.threads, kept.threads) << name << round;
      EXPECT_EQ(now.windows, kept.windows) << name << round;
    }
  }
}

TEST(BridgeTest, OpensWithWhateverMemoryThereIsAndLosesNone) {
  const HMODULE module = LoadLibraryA("Kelvo.dll");
  ASSERT_TRUE(module);
  const auto limit = Find<uint32_t(__cdecl*)(int32_t)>(module, "LimitHeap");
  auto* const plugin = Find<OggVorbisInput*(__cdecl*)(int32_t)>(module, "GetFeature")(3);
  test::MemoryReader reader(test::ReadMedia("tone_8000_stereo.ogg"));
  plugin->SetReader(&reader);
  const uint32_t before = limit(-1);
  int32_t opened = 0, requests = 0;
  for (; opened == 0 && requests < 2000; ++requests) {
    limit(requests);
    opened = plugin->Open(L"x", 0);
    const uint32_t blocks = limit(-1);
    if (opened == 0) {
      ASSERT_EQ(blocks, before) << requests;
    }
  }
  EXPECT_EQ(opened, 1);
  EXPECT_GT(requests, 50);
  plugin->Close(0, 0);
  plugin->SetReader(nullptr);
  EXPECT_EQ(limit(-1), before);
  FreeLibrary(module);
}

struct Ending {
  DWORD code = 0;
  std::string text;
};

// Runs this program with an argument; it ends by itself or the test does.
Ending RunChild(const std::string& argument) {
  SECURITY_ATTRIBUTES inherited = {sizeof(inherited), nullptr, TRUE};
  const char name[] = "bridge_test_stderr.txt";
  const HANDLE output =
      CreateFileA(name, GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS, 0, nullptr);
  STARTUPINFOA start = {};
  start.cb = sizeof(start);
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = start.hStdError = output;
  char path[MAX_PATH];
  GetModuleFileNameA(nullptr, path, MAX_PATH);
  std::string line = '"' + std::string(path) + "\" " + argument;
  PROCESS_INFORMATION child = {};
  Ending ending;
  if (CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                     &child)) {
    WaitForSingleObject(child.hProcess, INFINITE);
    GetExitCodeProcess(child.hProcess, &ending.code);
    CloseHandle(child.hThread);
    CloseHandle(child.hProcess);
  }
  CloseHandle(output);
  ending.text = ReadAll(name);
  return ending;
}

TEST(BridgeTest, EndsTheRunWhereTheDeviceWouldNotGoOn) {
  // By the number of the fault in the probe.
  const char* const kMessages[] = {"unaligned",
                                   "unaligned",
                                   "is no block",
                                   "a block of 8 bytes is overrun",
                                   "what lies before a block",
                                   "no memory in page 0",
                                   "a write to constant data",
                                   "a stack of more than 64 KB",
                                   "a page of the stack is skipped",
                                   "GetVersionExW: a record of 148 bytes, not 276",
                                   "fetch",
                                   "lacks",
                                   "lacks",
                                   "lacks",
                                   "lacks",
                                   "lacks"};
  int number = 0;
  for (const char* message : kMessages) {
    const Ending ending = RunChild("fault " + std::to_string(number++));
    EXPECT_EQ(ending.code, 99u) << message;
    EXPECT_NE(ending.text.find("device bridge: "), std::string::npos) << message;
    EXPECT_NE(ending.text.find(message), std::string::npos) << message << ", but: " << ending.text;
  }
}

TEST(BridgeTest, RefusesToLoadWhatTheDeviceWouldNot) {
  const std::string bridge = ReadAll("probe.dll"), library = ReadAll("probe_arm.dll");
  const struct {
    const char* from;
    const char* to;
    const char* message;
  } kCases[] = {{"GetVersionExW", "GetVersionExA", "the device has no GetVersionExA"},
                {"CreateEventW", "CreateMutexW", "the device has no CreateMutexW"},
                {"coredll.dll", "coredlx.dll", "nobody here has"},
                {"PE", "XE", "is no library of the device"}};
  for (const auto& c : kCases) {
    std::string other = library;
    const size_t at = other.find(std::string(c.from) + '\0');
    ASSERT_NE(at, std::string::npos) << c.from;
    other.replace(at, strlen(c.to), c.to);
    WriteAll("other.dll", bridge);
    WriteAll("other_arm.dll", other);
    const Ending ending = RunChild("load");
    EXPECT_EQ(ending.code, 99u) << c.to;
    EXPECT_NE(ending.text.find(c.message), std::string::npos)
        << c.message << ", but: " << ending.text;
  }
}

}  // namespace
}  // namespace kelvo

int main(int argc, char** argv) {
  const std::string argument = argc > 1 ? argv[1] : "";
  if (argument == "load") return LoadLibraryA("other.dll") ? 0 : 1;
  if (argument == "fault" && argc > 2) {
    const HMODULE module = LoadLibraryA("probe.dll");
    kelvo::GetProbe(module)->Fault(static_cast<uint32_t>(atoi(argv[2])));
    return 0;
  }
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
