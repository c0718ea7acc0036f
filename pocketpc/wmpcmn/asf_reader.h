#pragma once

#include <windows.h>

#include <wmsdkidl.h>

#include "base/windows/com_ptr.h"

namespace kelvo {

// A synchronous reader of the system with the file open in it. It is not trusted with damaged
// files: a header that is not whole is refused before, and opening runs on a thread of its own that
// is given up after some seconds, because the reader may wait forever. What was given up stays as
// it is.
HRESULT OpenAsfReader(const wchar_t* path, ComPtr<IWMSyncReader>* reader) noexcept;

}  // namespace kelvo
