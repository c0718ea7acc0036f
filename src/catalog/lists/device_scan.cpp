#include "catalog/lists/device_lists.h"

#include "base/text/wide.h"
#include "catalog/media/add_entry.h"
#include "catalog/media/entry_list.h"

namespace kelvo {
namespace {

// One folder being scanned. On the heap: a deep chain of folders must not use up the stack.
class FolderScan final : public FolderVisitor {
 public:
  FolderScan(FileSystem& files, MediaInformation& information, const ScanResult& result,
             ScanProgress& progress) noexcept
      : files_(files), information_(information), result_(result), progress_(progress) {}

  bool Run(const wchar_t* folder) noexcept {
    length_ = CopyWide(path_, kScanPathCapacity, folder);
    CopyWide(pattern_, kScanPathCapacity, folder);
    if (folder[length_] == 0 && AppendWide(pattern_, kScanPathCapacity, L"\\*.*")) {
      files_.List(pattern_, *this);
    }
    return goes_on_;
  }

  bool Visit(const FolderEntry& entry) noexcept override {
    goes_on_ = progress_.GoesOn(result_.media->size() + result_.playlists->size());
    return goes_on_ && Add(entry);
  }

 private:
  bool Add(const FolderEntry& entry) noexcept {
    const MediaKind kind = entry.is_folder() ? MediaKind::kNone : MediaKindOf(entry.name);
    if (!entry.is_folder() && kind == MediaKind::kNone) return true;
    path_[length_] = 0;
    if (!AppendWide(path_, kScanPathCapacity, L"\\") ||
        !AppendWide(path_, kScanPathCapacity, entry.name)) {
      return true;
    }
    if (entry.is_folder()) {
      goes_on_ = ScanFolder(files_, information_, path_, result_, progress_);
    } else {
      AddFile(kind);
    }
    return goes_on_;
  }

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
  ScanProgress& progress_;
  bool goes_on_ = true;
  size_t length_ = 0;  // of the folder in path_
  wchar_t path_[kScanPathCapacity];
  wchar_t pattern_[kScanPathCapacity];
};

}  // namespace

bool ScanFolder(FileSystem& files, MediaInformation& information, const wchar_t* folder,
                const ScanResult& result, ScanProgress& progress) noexcept {
  const HeapPtr<FolderScan> scan(HeapNew<FolderScan>(files, information, result, progress));
  return !scan || scan->Run(folder);
}

}  // namespace kelvo
