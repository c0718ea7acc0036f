#pragma once

#include "base/memory/array.h"
#include "base/memory/heap_text.h"
#include "tools/kelvotool/console.h"

namespace kelvo::tool {

// Every file of a device, by its name on the device.
class CardFiles {
 public:
  // `root` is the folder of this machine where the device's files lie. False when memory is out.
  [[nodiscard]] bool Search(const wchar_t* root) noexcept;

  const Array<HeapText>& paths() const noexcept { return paths_; }

 private:
  // The files and folders of a folder, named below the root: "" or "\Music".
  [[nodiscard]] bool SearchFolder(const wchar_t* folder, Array<HeapText>* folders,
                                  Progress* progress) noexcept;

  const wchar_t* root_ = nullptr;
  Array<HeapText> paths_;
};

// How many folders above the file two paths have in common, by name; both end in the same file.
size_t CommonFolders(const wchar_t* a, const wchar_t* b) noexcept;

}  // namespace kelvo::tool
