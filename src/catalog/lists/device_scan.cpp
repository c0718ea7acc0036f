#include "catalog/lists/device_lists.h"

#include "base/text/wide.h"
#include "catalog/media/add_entry.h"
#include "catalog/media/entry_list.h"

namespace kelvo {
namespace {

// One folder being scanned. On the heap: a deep chain of folders must not use up the stack.
class FolderScan final : public FolderVisitor {
 public:
  FolderScan(FileSystem& files, MediaInformation& information, const ScanResult& result) noexcept
      : files_(files), information_(information), result_(result) {}

  void Run(const wchar_t* folder) noexcept {
    length_ = CopyWide(path_, kScanPathCapacity, folder);
    CopyWide(pattern_, kScanPathCapacity, folder);
    if (folder[length_] != 0 || !AppendWide(pattern_, kScanPathCapacity, L"\\*.*")) return;
    files_.List(pattern_, *this);
  }

  bool Visit(const FolderEntry& entry) noexcept override {
    const MediaKind kind = entry.is_folder() ? MediaKind::kNone : MediaKindOf(entry.name);
    if (!entry.is_folder() && kind == MediaKind::kNone) return true;
    path_[length_] = 0;
    if (!AppendWide(path_, kScanPathCapacity, L"\\") ||
        !AppendWide(path_, kScanPathCapacity, entry.name)) {
      return true;
    }
    if (entry.is_folder()) {
      ScanFolder(files_, information_, path_, result_);
    } else {
      AddFile(kind);
    }
    return true;
  }

 private:
  void AddFile(MediaKind kind) noexcept {
    switch (kind) {
      case MediaKind::kM3u:
      case MediaKind::kPls:
      case MediaKind::kAsx:
        result_.playlists->Add(path_);
        break;
      default:
        AddMediaEntry(kind, files_, information_, path_, result_.media);
    }
  }

  FileSystem& files_;
  MediaInformation& information_;
  ScanResult result_;
  size_t length_ = 0;  // of the folder in path_
  wchar_t path_[kScanPathCapacity];
  wchar_t pattern_[kScanPathCapacity];
};

}  // namespace

void ScanFolder(FileSystem& files, MediaInformation& information, const wchar_t* folder,
                const ScanResult& result) noexcept {
  const HeapPtr<FolderScan> scan(HeapNew<FolderScan>(files, information, result));
  if (scan) scan->Run(folder);
}

}  // namespace kelvo
