#include "pocketpc/wmpcmn/asf_decoder.h"

#include <mmreg.h>
#include <nserror.h>
#include <string.h>

#include "pocketpc/wmpcmn/asf_reader.h"

namespace kelvo {
namespace {

constexpr GUID kAudioType = {
    0x73647561, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}};
constexpr uint64_t kUnitsPerSecond = 10000000;

}  // namespace

HRESULT AsfDecoder::Open(const wchar_t* path) noexcept {
  Close();
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

HRESULT AsfDecoder::Seek(uint64_t time) noexcept {
  return reader_->SetRange(time, 0);
}

HRESULT AsfDecoder::Read(Array<int16_t>* samples, uint64_t* end_time) noexcept {
  ComPtr<INSSBuffer> buffer;
  QWORD time = 0;
  QWORD length = 0;
  DWORD flags, output, bytes;
  WORD stream;
  BYTE* data;
  HRESULT result =
      reader_->GetNextSample(stream_, buffer.Receive(), &time, &length, &flags, &output, &stream);
  if (result == NS_E_NO_MORE_SAMPLES) return S_FALSE;
  if (SUCCEEDED(result)) result = buffer->GetBufferAndLength(&data, &bytes);
  if (SUCCEEDED(result)) result = ToStereo(data, bytes, samples);

  *end_time = time + samples->size() / 2 * kUnitsPerSecond / rate_;
  return result;
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
