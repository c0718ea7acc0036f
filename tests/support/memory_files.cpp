#include "tests/support/memory_files.h"

#include <string.h>

#include <algorithm>

#include "base/memory/heap.h"
#include "base/text/wide.h"
#include "tests/support/wide_text.h"

namespace kelvo::test {
namespace {

bool SameName(const std::string& a, const std::string& b) {
  if (a.size() != b.size()) return false;
  const auto same = [](char x, char y) { return FoldAscii(x) == FoldAscii(y); };
  const auto [x, y] = std::mismatch(a.begin(), a.end(), b.begin(), same);
  // Only now and then a name takes the long way.
  return x == a.end() || ((*x & *y & 0x80) != 0 && EqualNoCase(Wide(a), Wide(b)));
}

// "*" and "?"; "*.*" is every name.
bool Matches(const char* pattern, const char* name) {
  if (strcmp(pattern, "*.*") == 0) return true;
  if (*pattern == 0) return *name == 0;
  if (*pattern == '*') {
    return Matches(pattern + 1, name) || (*name != 0 && Matches(pattern, name + 1));
  }
  if (*name == 0) return false;
  const bool same = *pattern == '?' || FoldAscii(*pattern) == FoldAscii(*name);
  return same && Matches(pattern + 1, name + 1);
}

}  // namespace

// Keeps its own copy of the bytes: a file that is replaced meanwhile does not change under it.
class MemoryFiles::Reader final : public FileReader {
 public:
  Reader(MemoryFiles* owner, const File& file)
      : owner_(owner), path_(file.path), bytes_(file.bytes) {}
  uint64_t SizeBytes() noexcept override { return bytes_.size(); }
  ReadResult ReadSome(uint64_t offset, void* dst, size_t bytes, size_t* got) noexcept override {
    *got = 0;
    if (!owner_->Begin("read " + std::to_string(bytes))) return ReadResult::kFailed;
    if (offset >= bytes_.size()) return ReadResult::kOk;
    *got = std::min(bytes, bytes_.size() - static_cast<size_t>(offset));
    memcpy(dst, bytes_.data() + offset, *got);
    return ReadResult::kOk;
  }
  void Close() noexcept override {
    owner_->Closed(path_);
    HeapDelete(this);
  }

 private:
  MemoryFiles* owner_;
  std::string path_;
  std::string bytes_;
};

class MemoryFiles::Writer final : public FileWriter {
 public:
  Writer(MemoryFiles* owner, const std::string& path) : owner_(owner), path_(path) {}
  bool Write(const void* data, size_t bytes) noexcept override {
    File* file = owner_->Find(path_);
    const bool allowed = owner_->Begin("write " + std::to_string(bytes));
    if (!allowed || !file) return false;
    if (file->bytes.size() < at_ + bytes) file->bytes.resize(at_ + bytes);
    memcpy(&file->bytes[at_], data, bytes);
    at_ += bytes;
    return true;
  }
  bool SeekFromEnd(uint32_t distance) noexcept override {
    const File* file = owner_->Find(path_);
    if (!owner_->Begin("seek " + std::to_string(distance)) || !file) return false;
    if (distance > file->bytes.size()) return false;
    at_ = file->bytes.size() - distance;
    return true;
  }
  bool Flush() noexcept override { return owner_->Begin("flush"); }
  void Close() noexcept override {
    owner_->Closed(path_);
    HeapDelete(this);
  }

 private:
  MemoryFiles* owner_;
  std::string path_;
  size_t at_ = 0;
};

MemoryFiles::File& MemoryFiles::Put(const std::string& path, const std::string& bytes,
                                    uint32_t attributes) {
  if (File* old = Find(path)) {
    *old = {old->path, bytes, attributes, false};
    return *old;
  }
  files_.push_back({path, bytes, attributes, false});
  return files_.back();
}

MemoryFiles::File* MemoryFiles::Find(const std::string& path) {
  for (File& file : files_) {
    if (SameName(file.path, path)) return &file;
  }
  return nullptr;
}

std::string& MemoryFiles::operator[](const std::string& path) {
  File* file = Find(path);
  return file ? file->bytes : Put(path, "").bytes;
}

void MemoryFiles::FailAfter(long successes, bool from_then_on, const std::string& kind) {
  using Mode = Countdown::Mode;
  faults_ = Countdown(successes, from_then_on ? Mode::kFromThenOn : Mode::kOnce);
  failing_kind_ = kind;
}

bool MemoryFiles::Begin(const std::string& call) {
  if (before) before(*this, call);
  log.push_back(call);
  return call.compare(0, failing_kind_.size(), failing_kind_) != 0 || !faults_.Fails();
}

void MemoryFiles::Opened(const std::string& path) {
  open_.push_back(path);
  most_open = std::max(most_open, ++open_now);
}

void MemoryFiles::Closed(const std::string& path) {
  open_.erase(std::find(open_.begin(), open_.end(), path));
  --open_now;
}

bool MemoryFiles::IsOpen(const std::string& path) const {
  return std::any_of(open_.begin(), open_.end(),
                     [&](const std::string& open) { return SameName(open, path); });
}

bool MemoryFiles::HasFolder(const std::string& path) const {
  if (path.empty() || path.back() == ':') return true;
  return std::any_of(files_.begin(), files_.end(), [&](const File& file) {
    if (SameName(file.path, path)) return (file.attributes & kAttributeFolder) != 0;
    return SameName(file.path.substr(0, path.size() + 1), path + '\\');
  });
}

OpenFile<FileReader> MemoryFiles::OpenRead(const wchar_t* path, Share share) noexcept {
  last_share = share;
  const bool allowed = Begin("open " + Utf8(path));
  const File* file = Find(Utf8(path));
  if (!allowed || !file || file->unreadable || (file->attributes & kAttributeFolder)) return {};
  Reader* reader = HeapNew<Reader>(this, *file);
  if (reader) Opened(file->path);
  return OpenFile<FileReader>(reader);
}

OpenFile<FileWriter> MemoryFiles::MakeWriter(const std::string& path) {
  const File* file = Find(path);
  if (!file || file->locked || (file->attributes & (kAttributeFolder | kAttributeReadOnly))) {
    return {};
  }
  Writer* writer = HeapNew<Writer>(this, path);
  if (writer) Opened(path);
  return OpenFile<FileWriter>(writer);
}

OpenFile<FileWriter> MemoryFiles::OpenWrite(const wchar_t* path, Share share) noexcept {
  last_share = share;
  if (!Begin("open-write " + Utf8(path))) return {};
  return MakeWriter(Utf8(path));
}

OpenFile<FileWriter> MemoryFiles::Create(const wchar_t* path, Share share) noexcept {
  last_share = share;
  const bool allowed = Begin("create " + Utf8(path));
  if (!allowed || WideLength(path) >= kTextCapacity) return {};
  const std::string name = Utf8(path);
  const size_t slash = name.rfind('\\');
  const bool in_folder = slash == std::string::npos || HasFolder(name.substr(0, slash));
  if (!in_folder || slash + 1 == name.size()) return {};
  File* file = Find(name);
  if (!file) file = &Put(name, "");
  OpenFile<FileWriter> writer = MakeWriter(name);
  if (writer) file->bytes.clear();
  return writer;
}

bool MemoryFiles::GetAttributes(const wchar_t* path, uint32_t* attributes) noexcept {
  std::string name = Utf8(path);
  const bool allowed = Begin("attributes " + name);
  const File* file = Find(name);
  const bool is_path = !name.empty();
  if (is_path && name.back() == '\\') name.pop_back();
  const bool is_folder = is_path && !file && HasFolder(name);
  if (!allowed || (!file && !is_folder)) return false;
  *attributes = file ? file->attributes : kAttributeFolder;
  return true;
}

bool MemoryFiles::SetAttributes(const wchar_t* path, uint32_t attributes) noexcept {
  const bool allowed = Begin("set-attributes " + Utf8(path) + " " + std::to_string(attributes));
  File* file = Find(Utf8(path));
  if (!allowed || !file) return false;
  file->attributes = attributes;
  return true;
}

bool MemoryFiles::Delete(const wchar_t* path) noexcept {
  const bool allowed = Begin("delete " + Utf8(path));
  const File* file = Find(Utf8(path));
  if (!allowed || !file || (file->attributes & kAttributeReadOnly) || IsOpen(file->path)) {
    return false;
  }
  files_.erase(files_.begin() + (file - files_.data()));
  return true;
}

bool MemoryFiles::Move(const wchar_t* from, const wchar_t* to) noexcept {
  const bool allowed = Begin("move " + Utf8(from) + " " + Utf8(to));
  File* file = Find(Utf8(from));
  if (!allowed || !file || Find(Utf8(to)) || IsOpen(file->path)) return false;
  file->path = Utf8(to);
  return true;
}

bool MemoryFiles::Replace(const wchar_t* from, const wchar_t* to) noexcept {
  const bool allowed = Begin("replace " + Utf8(from) + " " + Utf8(to));
  const File* old = Find(Utf8(to));
  if (!allowed || !Find(Utf8(from)) || IsOpen(Utf8(from)) || WideLength(to) >= kTextCapacity) {
    return false;
  }
  if (old) {
    constexpr uint32_t kKept = kAttributeFolder | kAttributeReadOnly;
    if (old->locked || (old->attributes & kKept) || IsOpen(old->path)) return false;
    files_.erase(files_.begin() + (old - files_.data()));
  }
  Find(Utf8(from))->path = Utf8(to);
  return true;
}

bool MemoryFiles::List(const wchar_t* pattern, FolderVisitor& visitor) noexcept {
  if (!Begin("list " + Utf8(pattern)) || WideLength(pattern) >= kTextCapacity) return false;
  const std::string whole = Utf8(pattern);
  const size_t slash = whole.rfind('\\');
  const std::string folder = slash == std::string::npos ? "" : whole.substr(0, slash + 1);
  const std::string wildcard = whole.substr(folder.size());
  const bool is_root = folder.size() <= 1 || folder.back() == ':';
  if (!is_root && !Find(folder.substr(0, folder.size() - 1))) return false;
  const std::vector<File> snapshot = files_;
  for (const File& file : snapshot) {
    if (file.path.size() <= folder.size() ||
        !SameName(file.path.substr(0, folder.size()), folder)) {
      continue;
    }
    const std::string name = file.path.substr(folder.size());
    // Desktop systems also look at a short name, whose extension is cut.
    const std::string cut = name.substr(0, name.rfind('.') + 4);
    if (name.find('\\') != std::string::npos ||
        (!Matches(wildcard.c_str(), name.c_str()) && !Matches(wildcard.c_str(), cut.c_str()))) {
      continue;
    }
    const Wide wide(name);
    if (!visitor.Visit({wide.c_str(), file.attributes})) break;
  }
  return true;
}

}  // namespace kelvo::test
