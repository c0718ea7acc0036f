// Imports: C streams and the system's files, below a folder of this machine. Names are found with
// their case as written.
#include <string.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>

#include "fail.h"
#include "process.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

constexpr uint32_t kInvalidHandle = 0xFFFFFFFF;
constexpr uint32_t kCreateAlways = 2, kOpenExisting = 3;
constexpr uint32_t kGenericWrite = 0x40000000;
constexpr uint32_t kFolderAttribute = 0x10, kNormalAttribute = 0x80;
// The device's directory entry: attributes, three times, size high and low, number, name.
constexpr uint32_t kEntrySize = 28, kEntryName = 40, kEntryBytes = kEntryName + 260 * 2;

struct Search {
  std::vector<fs::directory_entry> entries;
  size_t next = 0;
};

// What is open; a handle or stream outlives no process.
struct OpenFiles {
  std::map<uint32_t, FILE*> files;
  std::map<uint32_t, Search> searches;
  ~OpenFiles() {
    for (auto& [handle, file] : files) fclose(file);
  }
  FILE* Get(uint32_t handle) const {
    const auto found = files.find(handle);
    if (found == files.end()) Fail("%#x is no open file", handle);
    return found->second;
  }
};

std::string HostPath(Process& p, const std::u16string& path) {
  std::string host = p.folder;
  if (path.empty() || path[0] != u'\\') host += '/';
  for (const char16_t c : path) {
    if (c >= 0x80) Fail("a path outside ASCII");
    host += c == u'\\' ? '/' : static_cast<char>(c);
  }
  return host;
}

uint32_t Adopt(Process& p, OpenFiles& open, FILE* file, uint32_t failure) {
  if (!file) return failure;
  const uint32_t handle = p.NewHandle();
  open.files[handle] = file;
  return handle;
}

bool Matches(const std::string& pattern, const std::string& name) {
  if (pattern.empty()) return name.empty();
  if (pattern[0] == '*') {
    return Matches(pattern.substr(1), name) || (!name.empty() && Matches(pattern, name.substr(1)));
  }
  return !name.empty() && (pattern[0] == '?' || pattern[0] == name[0]) &&
         Matches(pattern.substr(1), name.substr(1));
}

uint32_t NextEntry(Process& p, Search& search, uint32_t out) {
  if (search.next == search.entries.size()) return 0;
  const fs::directory_entry& entry = search.entries[search.next++];
  memset(p.machine.At(out, kEntryBytes), 0, kEntryBytes);
  p.machine.SetWord(out, entry.is_directory() ? kFolderAttribute : kNormalAttribute);
  if (entry.is_regular_file()) {
    p.machine.SetWord(out + kEntrySize + 4, static_cast<uint32_t>(entry.file_size()));
  }
  const std::string name = entry.path().filename().string();
  p.machine.SetWide(out + kEntryName, std::u16string(name.begin(), name.end()));
  return 1;
}

void ProvideStreams(Process& process, std::shared_ptr<OpenFiles> open) {
  process.Provide("_wfopen", [open](Process& p) {
    const std::u16string mode = p.machine.Wide(p.Argument(1));
    const std::string path = HostPath(p, p.machine.Wide(p.Argument(0)));
    if (fs::is_directory(path)) return 0u;
    return Adopt(p, *open, fopen(path.c_str(), std::string(mode.begin(), mode.end()).c_str()), 0);
  });
  process.Provide("fclose", [open](Process& p) {
    fclose(open->Get(p.Argument(0)));
    open->files.erase(p.Argument(0));
    return 0u;
  });
  process.Provide("fread", [open](Process& p) {
    const uint32_t size = p.Argument(1), count = p.Argument(2);
    if (size == 0 || count == 0) return 0u;
    return static_cast<uint32_t>(
        fread(p.machine.At(p.Argument(0), size * count), size, count, open->Get(p.Argument(3))));
  });
  process.Provide("fseek", [open](Process& p) {
    return static_cast<uint32_t>(fseek(open->Get(p.Argument(0)),
                                       static_cast<int32_t>(p.Argument(1)),
                                       static_cast<int>(p.Argument(2))));
  });
  process.Provide("ftell", [open](Process& p) {
    return static_cast<uint32_t>(ftell(open->Get(p.Argument(0))));
  });
}

void ProvideSystemFiles(Process& process, std::shared_ptr<OpenFiles> open) {
  process.Provide("CreateFileW", [open](Process& p) {
    const std::string path = HostPath(p, p.machine.Wide(p.Argument(0)));
    const uint32_t how = p.Argument(4);
    if (how != kCreateAlways && how != kOpenExisting) Fail("CreateFileW: disposition %u", how);
    if (fs::is_directory(path)) return kInvalidHandle;
    const bool writes = (p.Argument(1) & kGenericWrite) != 0;
    const char* mode = how == kCreateAlways ? "w+b" : writes ? "r+b" : "rb";
    return Adopt(p, *open, fopen(path.c_str(), mode), kInvalidHandle);
  });
  process.Provide("ReadFile", [open](Process& p) {
    const uint32_t bytes = p.Argument(2);
    const size_t got =
        fread(p.machine.At(p.Argument(1), bytes), 1, bytes, open->Get(p.Argument(0)));
    p.machine.SetWord(p.Argument(3), static_cast<uint32_t>(got));
    return 1u;
  });
  process.Provide("WriteFile", [open](Process& p) {
    const uint32_t bytes = p.Argument(2);
    const size_t put =
        fwrite(p.machine.At(p.Argument(1), bytes), 1, bytes, open->Get(p.Argument(0)));
    p.machine.SetWord(p.Argument(3), static_cast<uint32_t>(put));
    return put == bytes ? 1u : 0u;
  });
  process.Provide("FlushFileBuffers", [open](Process& p) {
    return fflush(open->Get(p.Argument(0))) == 0 ? 1u : 0u;
  });
  process.Provide("GetFileSize", [open](Process& p) {
    FILE* file = open->Get(p.Argument(0));
    const long position = ftell(file);
    fseek(file, 0, SEEK_END);
    const long bytes = ftell(file);
    fseek(file, position, SEEK_SET);
    if (p.Argument(1) != 0) p.machine.SetWord(p.Argument(1), 0);
    return static_cast<uint32_t>(bytes);
  });
  process.Provide("SetFilePointer", [open](Process& p) {
    FILE* file = open->Get(p.Argument(0));
    int64_t distance = static_cast<int32_t>(p.Argument(1));
    if (p.Argument(2) != 0) {
      distance =
          static_cast<int64_t>(uint64_t{p.machine.Word(p.Argument(2))} << 32 | p.Argument(1));
    }
    if (fseek(file, distance, static_cast<int>(p.Argument(3))) != 0) return 0xFFFFFFFFu;
    if (p.Argument(2) != 0) p.machine.SetWord(p.Argument(2), 0);
    return static_cast<uint32_t>(ftell(file));
  });
  process.Provide("CloseHandle", [open](Process& p) {
    const uint32_t handle = p.Argument(0);
    if (const auto found = open->files.find(handle); found != open->files.end()) {
      fclose(found->second);
      open->files.erase(found);
    } else if (p.events.erase(handle) == 0 && p.thread_handles.erase(handle) == 0) {
      Fail("CloseHandle: %#x is no handle", handle);
    }
    return 1u;
  });
}

void ProvideFolders(Process& process, std::shared_ptr<OpenFiles> open) {
  process.Provide("GetFileAttributesW", [](Process& p) {
    const std::string path = HostPath(p, p.machine.Wide(p.Argument(0)));
    if (fs::is_directory(path)) return kFolderAttribute;
    return fs::exists(path) ? kNormalAttribute : 0xFFFFFFFFu;
  });
  process.Provide("DeleteFileW", [](Process& p) {
    std::error_code error;
    const std::string path = HostPath(p, p.machine.Wide(p.Argument(0)));
    return fs::is_regular_file(path) && fs::remove(path, error) ? 1u : 0u;
  });
  process.Provide("MoveFileW", [](Process& p) {
    std::error_code error;
    const std::string to = HostPath(p, p.machine.Wide(p.Argument(1)));
    if (fs::exists(to)) return 0u;
    fs::rename(HostPath(p, p.machine.Wide(p.Argument(0))), to, error);
    return error ? 0u : 1u;
  });
  process.Provide("DeleteAndRenameFile", [](Process& p) {
    std::error_code error;
    const std::string deleted = HostPath(p, p.machine.Wide(p.Argument(0)));
    if (!fs::is_regular_file(deleted)) return 0u;
    fs::rename(HostPath(p, p.machine.Wide(p.Argument(1))), deleted, error);
    return error ? 0u : 1u;
  });
  process.Provide("FindFirstFileW", [open](Process& p) {
    const fs::path pattern = HostPath(p, p.machine.Wide(p.Argument(0)));
    Search search;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(pattern.parent_path(), error)) {
      if (Matches(pattern.filename().string(), entry.path().filename().string())) {
        search.entries.push_back(entry);
      }
    }
    std::sort(search.entries.begin(), search.entries.end());
    if (NextEntry(p, search, p.Argument(1)) == 0) return kInvalidHandle;
    const uint32_t handle = p.NewHandle();
    open->searches[handle] = std::move(search);
    return handle;
  });
  process.Provide("FindNextFileW", [open](Process& p) {
    return NextEntry(p, open->searches.at(p.Argument(0)), p.Argument(1));
  });
  process.Provide("FindClose", [open](Process& p) {
    if (open->searches.erase(p.Argument(0)) == 0) Fail("FindClose: no search");
    return 1u;
  });
}

}  // namespace

void ProvideFiles(Process& process) {
  const auto open = std::make_shared<OpenFiles>();
  ProvideStreams(process, open);
  ProvideSystemFiles(process, open);
  ProvideFolders(process, open);
}

}  // namespace bench
