#include "pocketpc/wmpcmn/asf_reader.h"

#include <nserror.h>
#include <string.h>

#include "base/bytes/little_endian.h"
#include "base/files/file_system.h"
#include "base/memory/heap.h"
#include "base/memory/heap_text.h"
#include "base/windows/unique_handle.h"
#include "input/wma/asf_header.h"
#include "pocketpc/support/module_thread.h"

namespace kelvo {
namespace {

constexpr DWORD kMaxOpenMs = 10000;

constexpr AsfGuid kData = {0x36, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11,
                           0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C};
constexpr AsfGuid kStreamProperties = {0x91, 0x07, 0xDC, 0xB7, 0xB7, 0xA9, 0xCF, 0x11,
                                       0x8E, 0xE6, 0x00, 0xC0, 0x0C, 0x20, 0x53, 0x65};

constexpr size_t kFilePropertiesBytes = 104;
constexpr size_t kStreamPropertiesBytes = 78;
constexpr uint32_t kMaxObjects = 10000;

// True when the bytes begin with a whole Windows Media header, with its file properties and a
// stream, and a data object behind it. The system's readers do not all survive less: one waits
// forever on a file that is none.
bool IsWholeAsfFile(ByteSource& source) noexcept {
  uint8_t object[kAsfHeaderBytes];
  if (source.ReadAt(0, object, kAsfHeaderBytes) != ReadResult::kOk ||
      !IsAsfObject(object, kAsfHeader)) {
    return false;
  }
  const uint64_t end = LoadU64(object + sizeof(AsfGuid));
  const uint32_t count = LoadU32(object + kAsfObjectBytes);
  if (end < kAsfHeaderBytes || end > source.SizeBytes() || count > kMaxObjects) return false;

  bool has_properties = false;
  bool has_stream = false;
  uint64_t at = kAsfHeaderBytes;
  for (uint32_t i = 0; i < count; ++i) {
    if (end - at < kAsfObjectBytes) return false;
    if (source.ReadAt(at, object, kAsfObjectBytes) != ReadResult::kOk) return false;
    const uint64_t bytes = LoadU64(object + sizeof(AsfGuid));
    if (bytes < kAsfObjectBytes || bytes > end - at) return false;
    if (IsAsfObject(object, kAsfFileProperties) && bytes >= kFilePropertiesBytes)
      has_properties = true;
    if (IsAsfObject(object, kStreamProperties) && bytes >= kStreamPropertiesBytes)
      has_stream = true;
    at += bytes;
  }
  return has_properties && has_stream &&
         source.ReadAt(end, object, kAsfObjectBytes) == ReadResult::kOk &&
         IsAsfObject(object, kData);
}

// Shared by the one who asks and the opening thread; the last of them destroys it.
struct Attempt {
  LONG owners = 2;
  HeapText path;
  UniqueObject done;
  HRESULT result = E_FAIL;  // both valid once `done` is signalled
  ComPtr<IWMSyncReader> reader;
};

void Drop(Attempt* attempt) noexcept {
  if (InterlockedDecrement(&attempt->owners) == 0) HeapDelete(attempt);
}

// Loaded at run time, so that this DLL also loads where Windows Media is missing.
HRESULT CreateReader(IWMSyncReader** reader) noexcept {
  using Create = HRESULT(WINAPI*)(IUnknown*, DWORD, IWMSyncReader**);
  static const HMODULE module = LoadLibraryW(L"wmvcore.dll");  // for the life of the process
  const FARPROC found = module ? GetProcAddress(module, "WMCreateSyncReader") : nullptr;
  if (!found) return HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND);
  Create create;
  static_assert(sizeof(create) == sizeof(found));
  memcpy(&create, &found, sizeof(create));
  return create(nullptr, 0, reader);
}

void Run(void* context) noexcept {
  auto* const attempt = static_cast<Attempt*>(context);
  const bool in_apartment = SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED));
  attempt->result = CreateReader(attempt->reader.Receive());
  if (SUCCEEDED(attempt->result)) attempt->result = attempt->reader->Open(attempt->path.get());
  SetEvent(attempt->done.get());
  Drop(attempt);
  if (in_apartment) CoUninitialize();
}

}  // namespace

HRESULT OpenAsfReader(const wchar_t* path, ComPtr<IWMSyncReader>* reader) noexcept {
  OpenFile<FileReader> file = SystemFiles().OpenRead(path, Share::kRead);
  if (!file) return HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
  if (!IsWholeAsfFile(*file)) return NS_E_UNRECOGNIZED_STREAM_TYPE;
  file.Close();
  HeapPtr<Attempt> made(HeapNew<Attempt>());
  if (!made || !made->path.Assign(path)) return E_OUTOFMEMORY;
  made->done.Reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  if (!made->done || !StartModuleThread(&Run, made.get())) return E_OUTOFMEMORY;
  Attempt* const attempt = made.Release();
  HRESULT result = HRESULT_FROM_WIN32(ERROR_TIMEOUT);
  if (WaitForSingleObject(attempt->done.get(), kMaxOpenMs) == WAIT_OBJECT_0) {
    result = attempt->result;
    if (SUCCEEDED(result)) *reader = ComPtr<IWMSyncReader>(attempt->reader.Detach());
  }
  Drop(attempt);
  return result;
}

}  // namespace kelvo
