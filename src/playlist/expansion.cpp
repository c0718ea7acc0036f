#include "playlist/expansion.h"

#include "base/memory/array.h"
#include "base/memory/heap_text.h"

namespace kelvo {
namespace {

// A playlist that is being read: the last one, or one that waits for those inside it.
struct OpenList {
  HeapText path;
  OpenFile<FileReader> file;  // empty: closed for the time being
  uint64_t offset = 0;        // where reading goes on
  PlsKey key;
  ListFormat format = ListFormat::kM3u;
};

class Expansion {
 public:
  Expansion(FileSystem& files, NestingGuard* guard, PathSink& sink) noexcept
      : files_(files), guard_(guard), sink_(sink) {}

  void Run(const wchar_t* path, ListFormat format) noexcept {
    Push(path, format);
    while (!lists_.empty()) {
      if (!TakeLine()) Pop();
    }
  }

 private:
  static constexpr size_t kMostOpenFiles = 8;

  // False at the end of the innermost list.
  bool TakeLine() noexcept {
    TextLine line;
    if (!lines_.Next(&line)) return false;
    OpenList& list = lists_.back();
    ListEntry entry;
    if (!FindEntry(list.format, line, &list.key, &entry)) return true;
    size_t length;
    if (!MakeEntryPath(entry, folder_, path_, &length)) return true;
    const MediaKind kind = MediaKindOf(path_, length);
    ListFormat format;
    if (ListFormatOf(kind, &format)) {
      Push(path_, format);
    } else if (kind != MediaKind::kNone) {
      sink_.AddMedia(kind, path_);
    }
    return true;
  }

  // Goes into a list; stays where it is when that cannot be read.
  void Push(const wchar_t* path, ListFormat format) noexcept {
    ListFolder folder;
    if (!folder.Set(path, resolved_)) return;
    if (guard_ && !guard_->Enter(resolved_)) return;
    OpenList list;
    list.format = format;
    if (!list.path.Assign(resolved_) || !Open(&list) || !Append(std::move(list))) {
      if (guard_) guard_->Leave();
      return;
    }
    folder_ = folder;
    lines_.Start(&*lists_.back().file, 0);
  }

  bool Append(OpenList list) noexcept {
    const size_t depth = lists_.size();
    if (!lists_.Append(std::move(list))) return false;
    if (depth > 0) lists_[depth - 1].offset = lines_.offset();
    if (depth >= kMostOpenFiles) lists_[depth - kMostOpenFiles].file.Close();
    return true;
  }

  void Pop() noexcept {
    lists_.RemoveAt(lists_.size() - 1);
    if (guard_) guard_->Leave();
    if (lists_.empty()) return;
    OpenList& list = lists_.back();
    const bool readable = folder_.Set(list.path.c_str(), resolved_) && (list.file || Open(&list));
    lines_.Start(readable ? &*list.file : nullptr, list.offset);
  }

  bool Open(OpenList* list) noexcept {
    list->file = files_.OpenRead(list->path.c_str(), Share::kRead);
    return static_cast<bool>(list->file);
  }

  FileSystem& files_;
  NestingGuard* guard_;
  PathSink& sink_;
  Array<OpenList> lists_;  // from the outermost to the innermost
  ListFolder folder_;      // of the innermost
  LineReader lines_;       // of the innermost
  wchar_t path_[kTextCapacity];
  wchar_t resolved_[kTextCapacity];
};

}  // namespace

void ExpandList(FileSystem& files, const wchar_t* path, ListFormat format, NestingGuard* guard,
                PathSink& sink) noexcept {
  // About 6 KB: too much for the stack of a small device.
  HeapPtr<Expansion> expansion(HeapNew<Expansion>(files, guard, sink));
  if (expansion) expansion->Run(path, format);
}

void ExpandPath(FileSystem& files, const wchar_t* path, NestingGuard* guard,
                PathSink& sink) noexcept {
  const MediaKind kind = MediaKindOf(path);
  ListFormat format;
  if (ListFormatOf(kind, &format)) {
    ExpandList(files, path, format, guard, sink);
  } else if (kind != MediaKind::kNone) {
    sink.AddMedia(kind, path);
  }
}

}  // namespace kelvo
