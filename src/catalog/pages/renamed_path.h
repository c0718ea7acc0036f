#pragma once

#include "base/memory/heap_text.h"

namespace kelvo {

// The folder of `path`, a backslash and `name`. Without a value when memory is out.
HeapText RenamedPath(const wchar_t* path, const wchar_t* name) noexcept;

}  // namespace kelvo
