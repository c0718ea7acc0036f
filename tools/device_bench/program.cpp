#include "program.h"

#include <stdio.h>
#include <string.h>

#include <algorithm>

#include "library.h"
#include "report.h"

namespace bench {
namespace {

// Behind the library, before the heap.
constexpr uint32_t kProgramBase = Machine::kBase + (2 << 20);
constexpr char kFolder[] = "\\Velmora\\";
constexpr uint32_t kInvalidHandle = 0xFFFFFFFF;
// The clock goes with the library's work: about what the processor does in a millisecond.
constexpr uint64_t kInstructionsInMs = 117000;

std::string WideText(Machine& m, uint32_t address) {
  std::string text;
  for (; (m.Word(address & ~3u) >> (address & 2) * 8 & 0xFFFF) != 0; address += 2) {
    text += static_cast<char>(*m.At(address, 1));
  }
  return text;
}

void StoreWide(Machine& m, uint32_t address, const std::string& text) {
  for (size_t i = 0; i <= text.size(); ++i) {
    uint8_t* const character = m.At(address + 2 * static_cast<uint32_t>(i), 2);
    character[0] = static_cast<uint8_t>(i < text.size() ? text[i] : 0);
    character[1] = 0;
  }
}

// Where a numbered entry of a directory of resources leads, or that of any number; 0 without one.
uint32_t Entry(Machine& m, uint32_t root, uint32_t directory, uint32_t id, bool is_any = false) {
  const uint32_t counts = m.Word(root + directory + 12), named = counts & 0xFFFF;
  for (uint32_t i = named; i < named + (counts >> 16); ++i) {
    const uint32_t entry = root + directory + 16 + 8 * i;
    if (is_any || m.Word(entry) == id) return m.Word(entry + 4) & 0x7FFFFFFF;
  }
  return 0;
}

// A library's resource, as the address of what says where it lies.
uint32_t FindResource(Machine& m, const Image& image) {
  constexpr uint32_t kResources = 2;
  const uint32_t root = image.Directory(m, kResources);
  const uint32_t names = Entry(m, root, 0, m.Argument(2));
  const uint32_t languages = names ? Entry(m, root, names, m.Argument(1)) : 0;
  return languages ? root + Entry(m, root, languages, 0, true) : 0;
}

// The system's files and clock. Handles count from kFirstHandle.
class System {
 public:
  Imports MakeImports();

  std::map<std::string, std::string> files;  // by path
  const Library* library = nullptr;

 private:
  static constexpr uint32_t kFirstHandle = 0x1000;
  struct Open {
    std::string path;
    size_t at;
  };
  // Null for a handle of something else.
  Open* At(uint32_t handle) {
    const uint32_t index = handle - kFirstHandle;
    return index < open_.size() ? &open_[index] : nullptr;
  }

  uint32_t Create(Machine& m);
  uint32_t Read(Machine& m);
  uint32_t Write(Machine& m);
  uint32_t Move(Machine& m);
  uint32_t Delete(Machine& m) {
    return static_cast<uint32_t>(files.erase(WideText(m, m.Argument(0))));
  }

  std::vector<Open> open_;
  uint32_t slept_ms_ = 0;
};

uint32_t System::Create(Machine& m) {
  constexpr uint32_t kCreateAlways = 2;
  const std::string path = WideText(m, m.Argument(0));
  if (m.Argument(4) == kCreateAlways) {
    files[path].clear();
  } else if (files.count(path) == 0) {
    return kInvalidHandle;
  }
  open_.push_back({path, 0});
  return kFirstHandle + static_cast<uint32_t>(open_.size()) - 1;
}

uint32_t System::Read(Machine& m) {
  Open* const file = At(m.Argument(0));
  if (!file) return 0;
  const std::string& bytes = files[file->path];
  const auto left = static_cast<uint32_t>(bytes.size() - std::min(file->at, bytes.size()));
  const uint32_t count = std::min(m.Argument(2), left);
  memcpy(m.At(m.Argument(1), count), bytes.data() + file->at, count);
  file->at += count;
  m.SetWord(m.Argument(3), count);
  return 1;
}

uint32_t System::Write(Machine& m) {
  Open* const file = At(m.Argument(0));
  if (!file) return 0;
  const uint32_t count = m.Argument(2);
  files[file->path].append(reinterpret_cast<const char*>(m.At(m.Argument(1), count)), count);
  m.SetWord(m.Argument(3), count);
  return 1;
}

uint32_t System::Move(Machine& m) {
  constexpr uint32_t kCurrent = 1, kEnd = 2;
  Open* const file = At(m.Argument(0));
  if (!file) return kInvalidHandle;
  int64_t to = static_cast<int32_t>(m.Argument(1));
  if (m.Argument(3) == kCurrent) to += static_cast<int64_t>(file->at);
  if (m.Argument(3) == kEnd) to += static_cast<int64_t>(files[file->path].size());
  file->at = static_cast<size_t>(to);
  return static_cast<uint32_t>(to);
}

Imports System::MakeImports() {
  Imports imports = ImportsForSound();
  const auto add = [&](const char* name, Machine::Handler handler) {
    imports[name] = std::move(handler);
  };
  add("CreateFileW", [this](Machine& m) { return Create(m); });
  add("ReadFile", [this](Machine& m) { return Read(m); });
  add("WriteFile", [this](Machine& m) { return Write(m); });
  add("SetFilePointer", [this](Machine& m) { return Move(m); });
  add("DeleteFileW", [this](Machine& m) { return Delete(m); });
  add("GetFileSize", [this](Machine& m) {
    Open* const file = At(m.Argument(0));
    if (file && m.Argument(1) != 0) m.SetWord(m.Argument(1), 0);
    return file ? static_cast<uint32_t>(files[file->path].size()) : kInvalidHandle;
  });
  add("GetTickCount", [this](Machine& m) {
    return slept_ms_ + static_cast<uint32_t>(m.instructions() / kInstructionsInMs);
  });
  add("Sleep", [this](Machine& m) {
    slept_ms_ += m.Argument(0);
    return 0u;
  });
  add("GetModuleFileNameW", [](Machine& m) {
    const std::string path = std::string(kFolder) + "program.exe";
    StoreWide(m, m.Argument(1), path);
    return static_cast<uint32_t>(path.size());
  });
  add("LoadLibraryW", [](Machine& m) {
    return WideText(m, m.Argument(0)) == std::string(kFolder) + "Kelvo.dll" ? Machine::kBase : 0;
  });
  add("GetProcAddressW", [this](Machine& m) {
    const bool is_export =
        m.Argument(0) == Machine::kBase && WideText(m, m.Argument(1)) == "GetFeature";
    return is_export ? library->get_feature() : 0;
  });
  add("FindResourceW", [this](Machine& m) {
    return m.Argument(0) == Machine::kBase ? FindResource(m, library->image()) : 0;
  });
  add("LoadResource", [](Machine& m) { return Machine::kBase + m.Word(m.Argument(1)); });
  add("SizeofResource", [](Machine& m) { return m.Word(m.Argument(1) + 4); });
  // What is asked about lies in the library, or nowhere.
  add("IsBadReadPtr", [this](Machine& m) {
    const uint64_t from = m.Argument(0), end = from + m.Argument(1);
    return from < Machine::kBase || end > Machine::kBase + uint64_t{library->bytes()} ? 1u : 0u;
  });
  add("GetVersionExW", [](Machine& m) {
    m.SetWord(m.Argument(0) + 4, 3);   // Windows CE 3.0
    m.SetWord(m.Argument(0) + 16, 3);  // the platform's number
    return 1u;
  });
  add("GlobalMemoryStatus", [](Machine& m) {
    m.SetWord(m.Argument(0) + 8, 32 << 20);
    m.SetWord(m.Argument(0) + 12, 16 << 20);
    return 0u;
  });
  return imports;
}

}  // namespace

int RunProgram(const std::string& library_path, const std::string& program,
               const std::string& report) {
  System system;
  const Imports imports = system.MakeImports();
  Library library(library_path, imports);
  system.library = &library;
  if (library.bytes() > kProgramBase - Machine::kBase)
    Fail("the library has grown into the program");
  Machine& machine = library.machine;
  const Image image = LoadImage(machine, program, kProgramBase, imports);
  const uint32_t word = machine.Allocate(8);
  StoreWide(machine, word, "-");
  const auto code =
      static_cast<int>(machine.Call(image.Entry(machine), {kProgramBase, 0, word, 0}));
  const auto written = system.files.find(kFolder + report);
  if (written == system.files.end()) Fail("no file of the name %s is written", report.c_str());
  fwrite(written->second.data(), 1, written->second.size(), stdout);
  return code;
}

}  // namespace bench
