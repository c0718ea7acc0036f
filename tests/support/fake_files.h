// Files in memory, with faults on demand.
#pragma once

#include <string.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "base/bytes/memory_source.h"
#include "base/files/file_system.h"
#include "base/text/wide.h"
#include "tests/support/wide_text.h"

namespace kelvo::test {

// Names are whole paths in UTF-8, kept in the order of creation; folders are not modelled. Paths of
// 260 characters or more are refused, as the platform does.
class FakeFiles final : public FileSystem {
 public:
  std::vector<std::pair<std::string, std::string>> files;
  bool refuse_create = false;
  int failing_read = -1;   // this read fails, counted from 0 over all files
  int failing_write = -1;  // likewise; half of its bytes are written
  int reads = 0;
  int writes = 0;
  int open_now = 0;
  Share last_share = Share::kRead;

  std::string* Find(const std::string& name) {
    for (auto& file : files) {
      if (file.first == name) return &file.second;
    }
    return nullptr;
  }
  std::string& operator[](const std::string& name) {
    if (std::string* bytes = Find(name)) return *bytes;
    return files.emplace_back(name, "").second;
  }
  void Remove(const std::string& name) {
    files.erase(std::remove_if(files.begin(), files.end(),
                               [&](const auto& file) { return file.first == name; }),
                files.end());
  }

  OpenFile<FileReader> OpenRead(const wchar_t* path, Share share) noexcept override {
    last_share = share;
    const std::string* bytes = Find(Utf8(path));
    return bytes ? OpenFile<FileReader>(new Reader(this, *bytes)) : OpenFile<FileReader>();
  }
  OpenFile<FileWriter> OpenWrite(const wchar_t*, Share) noexcept override { return {}; }
  OpenFile<FileWriter> Create(const wchar_t* path, Share share) noexcept override {
    last_share = share;
    if (refuse_create || WideLength(path) >= kTextCapacity) return {};
    (*this)[Utf8(path)].clear();
    return OpenFile<FileWriter>(new Writer(this, Utf8(path)));
  }
  bool GetAttributes(const wchar_t* path, uint32_t* attributes) noexcept override {
    if (!Find(Utf8(path))) return false;
    *attributes = kAttributeNormal;
    return true;
  }
  bool SetAttributes(const wchar_t*, uint32_t) noexcept override { return false; }
  bool Delete(const wchar_t*) noexcept override { return false; }
  bool Move(const wchar_t*, const wchar_t*) noexcept override { return false; }

  // Knows patterns of the form "folder\*.xyz" only; a name that ends with "\" is a folder.
  bool List(const wchar_t* pattern, FolderVisitor& visitor) noexcept override {
    if (WideLength(pattern) >= kTextCapacity) return false;
    const std::string text = Utf8(pattern);
    const std::string folder = text.substr(0, text.rfind('\\') + 1);
    bool found = false;
    for (const auto& file : files) {
      if (file.first.compare(0, folder.size(), folder) != 0) continue;
      found = true;
      std::string name = file.first.substr(folder.size());
      const bool is_folder = !name.empty() && name.back() == '\\';
      if (is_folder) name.pop_back();
      if (!visitor.Visit({Wide(name), is_folder ? kAttributeFolder : kAttributeNormal})) break;
    }
    return found;
  }

 private:
  class Reader final : public FileReader {
   public:
    Reader(FakeFiles* owner, const std::string& bytes)
        : owner_(owner), bytes_(bytes), source_(bytes_.data(), bytes_.size()) {
      ++owner_->open_now;
    }
    uint64_t SizeBytes() noexcept override { return source_.SizeBytes(); }
    ReadResult ReadAt(uint64_t offset, void* dst, size_t bytes) noexcept override {
      return Fails() ? ReadResult::kFailed : source_.ReadAt(offset, dst, bytes);
    }
    ReadResult ReadSome(uint64_t offset, void* dst, size_t bytes, size_t* got) noexcept override {
      *got = 0;
      return Fails() ? ReadResult::kFailed : source_.ReadSome(offset, dst, bytes, got);
    }
    void Close() noexcept override {
      --owner_->open_now;
      delete this;
    }

   private:
    bool Fails() { return owner_->reads++ == owner_->failing_read; }

    FakeFiles* owner_;
    std::string bytes_;
    MemorySource source_;
  };

  class Writer final : public FileWriter {
   public:
    Writer(FakeFiles* owner, std::string name) : owner_(owner), name_(std::move(name)) {
      ++owner_->open_now;
    }
    bool Write(const void* data, size_t bytes) noexcept override {
      const bool fails = owner_->writes++ == owner_->failing_write;
      (*owner_)[name_].append(static_cast<const char*>(data), fails ? bytes / 2 : bytes);
      return !fails;
    }
    bool SeekFromEnd(uint32_t) noexcept override { return false; }
    void Close() noexcept override {
      --owner_->open_now;
      delete this;
    }

   private:
    FakeFiles* owner_;
    std::string name_;
  };
};

}  // namespace kelvo::test
