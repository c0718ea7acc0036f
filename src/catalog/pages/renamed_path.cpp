#include "catalog/pages/renamed_path.h"

#include "base/memory/array.h"
#include "base/text/wide.h"

namespace kelvo {

HeapText RenamedPath(const wchar_t* path, const wchar_t* name) noexcept {
  HeapText renamed;
  Array<wchar_t> text;
  const wchar_t* slash = FindLastWide(path, L'\\');
  const size_t folder = slash ? static_cast<size_t>(slash - path) : 0;
  if (!text.AppendRange(path, folder) || !text.Append(L'\\') ||
      !text.AppendRange(name, WideLength(name)) || !renamed.Assign(text.data(), text.size())) {
    return HeapText();
  }
  return renamed;
}

}  // namespace kelvo
