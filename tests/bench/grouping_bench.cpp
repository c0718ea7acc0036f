// The tree of the catalog for a device full of music, without the control: each order on 10,000
// files of 500 artists and 100,000 files of 20,000 artists.
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <random>
#include <string>

#include "catalog/tree/build_tree.h"
#include "tests/bench/measure.h"
#include "tests/support/wide_text.h"

namespace {

void Fill(kelvo::EntryList* list, int files, int artists) {
  std::mt19937 random(1);
  for (int i = 0; i < files; ++i) {
    const int artist = static_cast<int>(random() % static_cast<unsigned>(artists));
    char path[100];
    snprintf(path, sizeof(path), "\\Music\\Artist %05d\\%06d.mp3", artist, i);
    kelvo::MediaEntry* entry = list->Add(kelvo::test::Wide(path));
    if (!entry) abort();
    entry->tag.Reset(kelvo::HeapNew<kelvo::TagBlock>());
    snprintf(entry->tag->artist, 31, "Artist %05d", artist);
    snprintf(entry->tag->album, 31, "Album %d of %05d", i % 3, artist);
    snprintf(entry->tag->title, 31, "Title %06d", i);
    snprintf(entry->tag->genre, 31, "Genre %d", artist % 20);
  }
}

bool Measure(int files, int artists, double goal) {
  kelvo::EntryList list;
  Fill(&list, files, artists);
  bool reached = true;
  for (uint32_t order = 1; order <= 7; ++order) {
    kelvo::CatalogTree tree;
    const double seconds = kelvo::bench::Seconds(
        [&] { kelvo::BuildTree(list, static_cast<kelvo::GroupingOrder>(order), tree); });
    printf("%6d files, %5d artists, order %u: %7.3f s, %6zu nodes (goal <= %.1f s) %s\n", files,
           artists, order, seconds, static_cast<size_t>(tree.last()), goal,
           seconds <= goal ? "ok" : "MISSED");
    reached &= seconds <= goal;
  }
  return reached;
}

}  // namespace

int main() {
  bool reached = Measure(10000, 500, 0.1);
  reached &= Measure(100000, 20000, 2.5);
  return reached ? 0 : 1;
}
