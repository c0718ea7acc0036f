// Runs a fuzz target over every file of the folders given, so that what a fuzzer once found stays
// found. Fails when there is no file at all.
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv) {
  int replayed = 0;
  for (int i = 1; i < argc; ++i) {
    std::error_code error;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[i], error)) {
      if (!entry.is_regular_file(error)) continue;
      std::ifstream file(entry.path(), std::ios::binary);
      const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
      LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
      ++replayed;
    }
  }
  printf("%d inputs replayed\n", replayed);
  return replayed > 0 ? 0 : 1;
}
