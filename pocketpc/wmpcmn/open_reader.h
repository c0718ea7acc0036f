#pragma once

#include <windows.h>

#include <wmsdkidl.h>

#include "base/windows/com_ptr.h"

namespace kelvo {

// A synchronous reader of the system with the file open in it. Opening runs on a thread of its own
// and is given up after some seconds: on a damaged header the reader may wait forever. What was
// given up stays behind as it is.
HRESULT OpenReader(const wchar_t* path, ComPtr<IWMSyncReader>* reader) noexcept;

}  // namespace kelvo
