#include "bookmarks/bookmark_list.h"

#include <stddef.h>

#include "base/bytes/little_endian.h"
#include "base/text/wide.h"

namespace kelvo {
namespace {

constexpr wchar_t kReturn = 13;
constexpr wchar_t kLineFeed = 10;

// Reads lines of 16-bit units, a block of the file at a time.
class BookmarkLines {
 public:
  enum class [[nodiscard]] Result{
      kLine,    // a line, perhaps empty, perhaps ended by the end of the file
      kEnd,     // not one unit was left; the line is empty
      kFailed,  // the file could not be read
  };

  explicit BookmarkLines(ByteSource& source) noexcept : source_(source) {}

  // A line longer than the buffer keeps its start. The unit behind a carriage return belongs to the
  // line's end, whatever it is.
  Result Read(wchar_t (&line)[kTextCapacity]) noexcept {
    size_t length = 0;
    line[0] = 0;
    wchar_t unit;
    Result result = Next(&unit);
    if (result != Result::kLine) return result;
    for (; result == Result::kLine; result = Next(&unit)) {
      if (unit == kReturn) {
        result = Next(&unit);
        break;
      }
      if (length + 1 < kTextCapacity) {
        line[length++] = unit;
        line[length] = 0;
      }
    }
    return result == Result::kFailed ? Result::kFailed : Result::kLine;
  }

 private:
  static constexpr size_t kBlockBytes = 1024;

  // kLine: *unit is the next one. An odd byte at the end of the file is no unit.
  Result Next(wchar_t* unit) noexcept {
    if (bytes_ - next_ < 2) {
      offset_ += next_;
      next_ = bytes_ = 0;
      if (source_.ReadSome(offset_, block_, kBlockBytes, &bytes_) != ReadResult::kOk) {
        return Result::kFailed;
      }
      if (bytes_ < 2) return Result::kEnd;
    }
    *unit = static_cast<wchar_t>(LoadU16(block_ + next_));
    next_ += 2;
    return Result::kLine;
  }

  ByteSource& source_;
  uint64_t offset_ = 0;  // of the block in the file
  size_t bytes_ = 0;     // in the block
  size_t next_ = 0;      // the next unit in the block
  uint8_t block_[kBlockBytes];
};

// Collects units and writes them a block at a time. After a failed write it writes nothing more.
class LineWriter {
 public:
  explicit LineWriter(FileWriter& file) noexcept : file_(file) {}

  void Line(const wchar_t* text) noexcept {
    for (; *text != 0; ++text) Put(*text == kReturn || *text == kLineFeed ? L' ' : *text);
    Put(kReturn);
    Put(kLineFeed);
  }

  [[nodiscard]] bool Finish() noexcept {
    Flush();
    return ok_;
  }

 private:
  void Put(wchar_t unit) noexcept {
    if (bytes_ == sizeof(block_)) Flush();
    StoreU16(block_ + bytes_, static_cast<uint16_t>(unit));
    bytes_ += 2;
  }

  void Flush() noexcept {
    if (ok_ && bytes_ != 0) ok_ = file_.Write(block_, bytes_);
    bytes_ = 0;
  }

  FileWriter& file_;
  bool ok_ = true;
  size_t bytes_ = 0;
  uint8_t block_[1024];
};

}  // namespace

BookmarkList::BookmarkList(BookmarkList&& other) noexcept
    : items_(std::exchange(other.items_, nullptr)),
      count_(std::exchange(other.count_, 0)),
      capacity_(std::exchange(other.capacity_, 0)) {
  static_assert(offsetof(Bookmark, description) == sizeof(void*));
  static_assert(offsetof(Bookmark, position_s) == 2 * sizeof(void*));
  static_assert(offsetof(BookmarkList, items_) == 0);
  static_assert(offsetof(BookmarkList, count_) == sizeof(void*));
  static_assert(offsetof(BookmarkList, capacity_) == sizeof(void*) + 4);
}

bool BookmarkList::Grow() noexcept {
  constexpr int32_t kStep = 50;
  if (count_ < capacity_) return true;
  if (capacity_ > INT32_MAX - kStep) return false;
  const int32_t capacity = capacity_ + kStep;
  void* block = HeapAllocateZeroed(static_cast<size_t>(capacity), sizeof(Bookmark));
  if (!block) return false;
  Bookmark* grown = static_cast<Bookmark*>(block);
  for (int32_t i = 0; i < capacity; ++i) ::new (static_cast<void*>(grown + i)) Bookmark();
  for (int32_t i = 0; i < count_; ++i) grown[i] = std::move(items_[i]);
  HeapFree(std::exchange(items_, grown));  // what was in it has moved
  capacity_ = capacity;
  return true;
}

bool BookmarkList::Insert(int32_t at, Bookmark bookmark) noexcept {
  if (!Grow()) return false;
  items_[count_] = std::move(bookmark);
  for (int32_t i = count_++; i > at; --i) std::swap(items_[i], items_[i - 1]);
  return true;
}

void BookmarkList::RemoveAt(int32_t at) noexcept {
  for (int32_t i = at + 1; i < count_; ++i) std::swap(items_[i - 1], items_[i]);
  items_[--count_] = Bookmark();
}

void BookmarkList::Clear() noexcept {
  while (count_ > 0) items_[--count_] = Bookmark();
  HeapFree(std::exchange(items_, nullptr));
  capacity_ = 0;
}

bool ReadBookmarks(ByteSource& source, BookmarkList* list) noexcept {
  using Result = BookmarkLines::Result;
  Result result;
  BookmarkLines reader(source);
  wchar_t line[kTextCapacity];
  // An empty path ends the list, as the end of the file does.
  while ((result = reader.Read(line)) == Result::kLine && line[0] != 0) {
    Bookmark bookmark;
    if (!list->Grow() || !bookmark.path.Assign(line)) return false;
    if ((result = reader.Read(line)) != Result::kLine) break;
    bookmark.position_s = ParseDecimal(line);
    // The last description may be missing together with its line's end.
    if ((result = reader.Read(line)) == Result::kFailed) break;
    if (!bookmark.description.Assign(line)) return false;
    if (!list->Insert(list->size(), std::move(bookmark))) return false;
  }
  return result != Result::kFailed;
}

bool WriteBookmarks(FileWriter& file, const BookmarkList& list) noexcept {
  LineWriter writer(file);
  for (const Bookmark& bookmark : list) {
    if (bookmark.path.c_str()[0] == 0) continue;
    wchar_t position[12];
    FormatDecimal(position, bookmark.position_s);
    writer.Line(bookmark.path.c_str());
    writer.Line(position);
    writer.Line(bookmark.description.c_str());
  }
  return writer.Finish();
}

}  // namespace kelvo
