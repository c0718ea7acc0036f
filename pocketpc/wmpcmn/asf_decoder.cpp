#include "pocketpc/wmpcmn/asf_decoder.h"

#include <mmreg.h>
#include <nserror.h>
#include <string.h>

#include "base/bytes/little_endian.h"
#include "base/files/file_system.h"
#include "base/memory/heap.h"
#include "base/memory/heap_text.h"
#include "base/windows/unique_handle.h"
#include "input/wma/asf_header.h"
#include "pocketpc/support/module.h"

namespace kelvo {
namespace {

constexpr GUID kAudioType = {
    0x73647561, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}};
constexpr uint64_t kUnitsPerSecond = 10000000;
constexpr DWORD kMaxOpenMs = 10000;
constexpr uint64_t kBlockFrames = 256;  // of which all lengths of blocks are multiples
constexpr uint64_t kLeadIn = kUnitsPerSecond / 2;

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

// The reader is not trusted with damaged files: a header that is not whole is refused before, and
// opening runs on a thread of its own that is given up after some seconds, because the reader may
// wait forever. What was given up stays as it is.
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

}  // namespace

HRESULT AsfDecoder::Open(const wchar_t* path) noexcept {
  Close();
  wanted_ = 0;
  HRESULT result = OpenAsfReader(path, &reader_);
  if (SUCCEEDED(result)) result = SelectAudio();
  if (SUCCEEDED(result)) result = ReadDuration();
  if (FAILED(result)) Close();
  return result;
}

void AsfDecoder::Close() noexcept {
  if (reader_) reader_->Close();
  reader_.Reset();
}

HRESULT AsfDecoder::SelectAudio() noexcept {
  DWORD outputs = 0;
  HRESULT result = reader_->GetOutputCount(&outputs);
  if (FAILED(result)) return result;
  for (DWORD output = 0; output < outputs; ++output) {
    ComPtr<IWMOutputMediaProps> properties;
    GUID type;
    if (FAILED(reader_->GetOutputProps(output, properties.Receive()))) continue;
    if (FAILED(properties->GetType(&type)) || type != kAudioType) continue;
    result = UseFormat(properties.get());
    if (SUCCEEDED(result)) result = reader_->GetStreamNumberForOutput(output, &stream_);
    if (SUCCEEDED(result)) result = reader_->SetReadStreamSamples(stream_, FALSE);
    return result;
  }
  return NS_E_INVALID_OUTPUT_FORMAT;
}

HRESULT AsfDecoder::UseFormat(IWMOutputMediaProps* properties) noexcept {
  DWORD bytes = 0;
  HRESULT result = properties->GetMediaType(nullptr, &bytes);
  if (FAILED(result)) return result;
  Array<uint64_t> room;  // of words, for the structure's alignment
  if (!room.Resize(bytes / sizeof(uint64_t) + 1)) return E_OUTOFMEMORY;
  auto* const type = reinterpret_cast<WM_MEDIA_TYPE*>(room.data());
  result = properties->GetMediaType(type, &bytes);
  if (FAILED(result)) return result;
  WAVEFORMATEX format;
  if (!type->pbFormat || type->cbFormat < sizeof(format)) return NS_E_INVALID_OUTPUT_FORMAT;
  memcpy(&format, type->pbFormat, sizeof(format));
  if (format.wBitsPerSample != 16 || format.nChannels == 0 || format.nSamplesPerSec == 0 ||
      format.nBlockAlign != 2 * format.nChannels) {
    return NS_E_INVALID_OUTPUT_FORMAT;
  }
  channels_ = format.nChannels;
  rate_ = format.nSamplesPerSec;
  return S_OK;
}

HRESULT AsfDecoder::ReadDuration() noexcept {
  ComPtr<IWMHeaderInfo> header;
  HRESULT result = header.Query(reader_.get(), __uuidof(IWMHeaderInfo));
  if (FAILED(result)) return result;
  WORD stream = 0;
  WORD bytes = sizeof(duration_);
  WMT_ATTR_DATATYPE type;
  duration_ = 0;
  return header->GetAttributeByName(&stream, L"Duration", &type,
                                    reinterpret_cast<BYTE*>(&duration_), &bytes);
}

// A decoder that begins in the middle lacks what its first blocks overlap with: they come out weak,
// and begin with a jump.
HRESULT AsfDecoder::Seek(uint64_t time) noexcept {
  wanted_ = time;
  return reader_->SetRange(time > kLeadIn ? time - kLeadIn : 0, 0);
}

HRESULT AsfDecoder::Read(Array<int16_t>* samples, uint64_t* end_time) noexcept {
  uint64_t time = 0;
  do {
    const HRESULT result = ReadNext(samples, &time);
    if (result != S_OK) return result;
    *end_time = time + DurationOf(*samples);
  } while (*end_time <= wanted_);
  if (time < wanted_) {
    const size_t early =
        2 * static_cast<size_t>(((wanted_ - time) * rate_ + kUnitsPerSecond / 2) / kUnitsPerSecond);
    const size_t left = samples->size() - (early < samples->size() ? early : samples->size());
    memmove(samples->data(), samples->data() + samples->size() - left, left * sizeof(int16_t));
    if (!samples->Resize(left)) return E_OUTOFMEMORY;
  }
  wanted_ = 0;
  return S_OK;
}

uint64_t AsfDecoder::DurationOf(const Array<int16_t>& samples) const noexcept {
  return (samples.size() / 2 * kUnitsPerSecond + rate_ / 2) / rate_;
}

HRESULT AsfDecoder::ReadNext(Array<int16_t>* samples, uint64_t* time) noexcept {
  ComPtr<INSSBuffer> buffer;
  QWORD length = 0;
  DWORD flags, output, bytes;
  WORD stream;
  BYTE* data;
  QWORD begin = 0;
  HRESULT result =
      reader_->GetNextSample(stream_, buffer.Receive(), &begin, &length, &flags, &output, &stream);
  if (result == NS_E_NO_MORE_SAMPLES) return S_FALSE;
  if (SUCCEEDED(result)) result = buffer->GetBufferAndLength(&data, &bytes);
  if (SUCCEEDED(result)) result = ToStereo(data, bytes, samples);
  *time = BlockTime(begin);
  return FAILED(result) ? result : S_OK;
}

// The file's times are whole milliseconds, and behind a seek the reader counts on from one of them.
// But blocks begin at multiples of a number of frames.
uint64_t AsfDecoder::BlockTime(uint64_t told) const noexcept {
  const uint64_t frame = (told * rate_ + kUnitsPerSecond / 2) / kUnitsPerSecond;
  const uint64_t nearest = (frame + kBlockFrames / 2) / kBlockFrames * kBlockFrames;
  const uint64_t distance = frame > nearest ? frame - nearest : nearest - frame;
  return distance <= rate_ / 1000 ? (nearest * kUnitsPerSecond + rate_ / 2) / rate_ : told;
}

HRESULT AsfDecoder::ToStereo(const uint8_t* data, size_t bytes,
                             Array<int16_t>* samples) const noexcept {
  const size_t frames = bytes / (2 * channels_);
  if (!samples->Resize(frames * 2)) return E_OUTOFMEMORY;
  if (channels_ == 2) {
    memcpy(samples->data(), data, frames * 4);
    return S_OK;
  }
  const size_t right = channels_ > 1 ? 2 : 0;
  for (size_t i = 0; i < frames; ++i, data += 2 * channels_) {
    memcpy(samples->data() + 2 * i, data, 2);
    memcpy(samples->data() + 2 * i + 1, data + right, 2);
  }
  return S_OK;
}

}  // namespace kelvo
