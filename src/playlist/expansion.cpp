#include "playlist/expansion.h"

namespace kelvo {
namespace {

// A playlist that is being read: the last one, or one that waits for those inside it.
struct OpenList {
  HeapText path;
  OpenFile<FileReader> file;  // empty: closed for the time being
  uint64_t offset = 0;        // where reading goes on
  uint32_t line = 0;          // lines begun so far
  bool in_line = false;       // the next line is a further piece of this one
  PlsKey key;
  ListFormat format = ListFormat::kM3u;
};

class Expansion {
 public:
  Expansion(FileSystem& files, NestingGuard* guard, PathSink& sink) noexcept
      : files_(files), guard_(guard), sink_(sink) {}

  void Run(const wchar_t* path, ListFormat format) noexcept {
    Push(path, format, nullptr);
    while (!lists_.empty()) {
      if (!ReadLine()) Pop();
    }
  }

 private:
  static constexpr size_t kMostOpenFiles = 8;

  // False at the end of the innermost list.
  bool ReadLine() noexcept {
    OpenList& list = lists_.back();
    ListPosition at = {list.path.c_str(), list.line, list.in_line, {}};
    if (!lines_.Next(&at.text)) {
      if (lines_.ended_early()) sink_.Skip(Skipped::kBehindTextsEnd, L"", &at);
      return false;
    }
    if (guard_ && !guard_->CountLine()) return false;
    if (!list.in_line) at.line = ++list.line;
    list.in_line = at.text.continues;
    ListEntry entry;
    if (!FindEntry(list.format, at.text, &list.key, &entry)) {
      sink_.Skip(Skipped::kLine, L"", &at);
      return true;
    }
    if (!MakeEntryPath(entry, list_path_, path_)) {
      sink_.Skip(Skipped::kTooLong, L"", &at);
      return true;
    }
    return FollowPath(at);
  }

  // What a line names, path_; false when the list is to be left.
  bool FollowPath(const ListPosition& at) noexcept {
    const MediaKind kind = MediaKindOf(path_);
    ListFormat format;
    if (ListFormatOf(kind, &format)) {
      Push(path_, format, &at);
    } else if (kind == MediaKind::kNone) {
      sink_.Skip(Skipped::kNoKind, path_, &at);
    } else if (guard_ && !guard_->CountMedia()) {
      sink_.Skip(Skipped::kRefused, path_, &at);
      return false;
    } else {
      sink_.AddMedia(kind, path_, &at);
    }
    return true;
  }

  // Goes into a list; stays where it is when that cannot be read.
  void Push(const wchar_t* path, ListFormat format, const ListPosition* at) noexcept {
    ListPath inner;
    if (!ToListPath(path, &inner)) return sink_.Skip(Skipped::kNameNotInAnsi, path, at);
    if (guard_ && !guard_->Enter(inner.path)) return sink_.Skip(Skipped::kRefused, inner.path, at);
    OpenList list;
    list.format = format;
    if (!list.path.Assign(inner.path) || !Open(&list) || !Append(std::move(list))) {
      if (guard_) guard_->Leave();
      return sink_.Skip(Skipped::kUnreadable, inner.path, at);
    }
    list_path_ = inner;
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
    const bool readable = ToListPath(list.path.c_str(), &list_path_) && (list.file || Open(&list));
    lines_.Start(readable ? &*list.file : nullptr, list.offset);
  }

  // As the C library opens for reading: others may read and write meanwhile.
  bool Open(OpenList* list) noexcept {
    list->file = files_.OpenRead(list->path.c_str(), Share::kReadWrite);
    return static_cast<bool>(list->file);
  }

  FileSystem& files_;
  NestingGuard* guard_;
  PathSink& sink_;
  Array<OpenList> lists_;  // from the outermost to the innermost
  ListPath list_path_;     // of the innermost
  LineReader lines_;       // of the innermost
  wchar_t path_[kTextCapacity];
};

}  // namespace

bool ChainGuard::IsOpen(const wchar_t* path) const noexcept {
  for (const HeapText& open : chain_) {
    if (EqualNoCase(open.c_str(), path)) return true;
  }
  return false;
}

bool ChainGuard::Enter(const wchar_t* path) noexcept {
  HeapText copy;
  const bool is_inner = !chain_.empty();
  if (is_inner && (media_ >= kMostNestedMedia || lines_ >= kMostNestedLines)) return false;
  if (lists_ >= kMostLists || IsOpen(path)) return false;
  if (!copy.Assign(path) || !chain_.Append(std::move(copy))) return false;
  ++lists_;
  return true;
}

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
  } else if (kind == MediaKind::kNone) {
    sink.Skip(Skipped::kNoKind, path, nullptr);
  } else {
    sink.AddMedia(kind, path, nullptr);
  }
}

}  // namespace kelvo
