#include "tests/pocketpc/reference_decode.h"

#include <stdlib.h>
#include <windows.h>

#include <wmsdkidl.h>

#include "base/windows/com_ptr.h"

namespace kelvo {

size_t Reference::FirstDifference(const std::vector<int16_t>& played, size_t copies) const {
  size_t i = settled * copies;
  while (i < played.size() && i < samples.size() * copies &&
         abs(played[i] - samples[i / copies]) <= kRoundingSteps) {
    ++i;
  }
  return i;
}

Reference DecodeWithSystem(const wchar_t* path) {
  Reference reference;
  const HMODULE module = LoadLibraryW(L"wmvcore.dll");
  using Create = HRESULT(WINAPI*)(IUnknown*, DWORD, IWMSyncReader**);
  const auto create = reinterpret_cast<Create>(
      reinterpret_cast<void*>(GetProcAddress(module, "WMCreateSyncReader")));
  ComPtr<IWMSyncReader> reader;
  if (!create || FAILED(create(nullptr, 0, reader.Receive())) || FAILED(reader->Open(path))) {
    return reference;
  }
  reader->SetReadStreamSamples(1, FALSE);
  for (int blocks = 0;;) {
    ComPtr<INSSBuffer> buffer;
    QWORD time, length;
    DWORD flags, output, bytes;
    WORD stream;
    BYTE* data;
    if (FAILED(
            reader->GetNextSample(1, buffer.Receive(), &time, &length, &flags, &output, &stream)))
      break;
    buffer->GetBufferAndLength(&data, &bytes);
    if (++blocks == 3) reference.settled = reference.samples.size();
    const auto* samples = reinterpret_cast<const int16_t*>(data);
    reference.samples.insert(reference.samples.end(), samples, samples + bytes / 2);
  }
  reader->Close();
  return reference;
}

}  // namespace kelvo
