// Any file: a tag is found exactly when its last 128 bytes begin with "TAG"; fields are terminated,
// zero-filled behind their text and free of blanks at their end.
#include <stddef.h>
#include <stdint.h>
#include <string.h>

#include "base/bytes/memory_source.h"
#include "catalog/media/entry_list.h"
#include "catalog/media/id3v1.h"
#include "tests/fuzz/require.h"

namespace {

using kelvo::fuzz::Require;

void CheckField(const kelvo::TagField& field) {
  Require(field[30] == 0);
  size_t end = 30;
  while (end > 0 && field[end - 1] == 0) --end;
  Require(end == 0 || field[end - 1] != ' ');
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  kelvo::MemorySource source(data, size);
  kelvo::MediaEntry entry;
  if (!entry.path.Assign(L"\\name.mp3")) return 0;
  const bool is_tag = size >= 128 && memcmp(data + size - 128, "TAG", 3) == 0;
  Require(kelvo::ReadId3v1(source, &entry) == is_tag);
  Require(static_cast<bool>(entry.tag) == is_tag);
  char title[kelvo::kTextCapacity];
  kelvo::TitleText(entry, title);
  Require(title[0] != 0);
  if (!is_tag) return 0;
  CheckField(entry.tag->title);
  CheckField(entry.tag->artist);
  CheckField(entry.tag->album);
  Require(strcmp(entry.tag->genre, kelvo::GenreName(data[size - 1])) == 0);
  return 0;
}
