// One comment of any bytes: the fields stay terminated, only the field of its key is touched, and
// plain text comes out as it went in.
#include <stddef.h>
#include <stdint.h>
#include <string.h>

#include <string>

#include "base/text/wide.h"
#include "input/vorbis/comments.h"
#include "tests/fuzz/require.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace kelvo;
  // A copy of its own size, so that a read past the terminator is noticed.
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  char* comment = strdup(bytes.c_str());
  CommentBlock block = {};
  MapComment(comment, &block);

  const wchar_t* fields[] = {block.date,  block.track_number, block.title,  block.artist,
                             block.album, block.genre,        block.comment};
  int filled = 0;
  for (const wchar_t* field : fields) {
    size_t length = 0;
    while (length < kCommentCapacity && field[length] != 0) ++length;
    fuzz::Require(length < kCommentCapacity);
    filled += length > 0;
  }
  fuzz::Require(filled <= 1);

  if (strncmp(comment, "TITLE=", 6) == 0) {
    for (size_t i = 6, at = 0; comment[i] > 0 && at + 1 < kCommentCapacity; ++i, ++at) {
      fuzz::Require(block.title[at] == comment[i]);
    }
  }
  wchar_t title[kTextCapacity];
  MakeDisplayTitle(block, L"\\a\\b.ogg", title);
  fuzz::Require(WideLength(title) < kTextCapacity);
  free(comment);
  return 0;
}
