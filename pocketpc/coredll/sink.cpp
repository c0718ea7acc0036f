#include "pocketpc/coredll/sink.h"

#include "base/text/wide.h"

namespace kelvo {
namespace {

constexpr wchar_t kSinkVariable[] = L"KELVO_AUDIO_SINK";
constexpr wchar_t kPaceVariable[] = L"KELVO_AUDIO_PACE";
constexpr wchar_t kSilence[] = L"silence";

Lock sinks_lock;  // guards the next three
Array<SinkDevice*> sinks;
wchar_t last_wanted[MAX_PATH] = L"";
int32_t last_number = 0;

// The file of the next device: FILE.wav, FILE-2.wav, ...; false when the name does not fit. Lock
// held.
bool NextPath(wchar_t (&path)[MAX_PATH]) noexcept {
  wchar_t wanted[MAX_PATH];
  const DWORD length = GetEnvironmentVariableW(kSinkVariable, wanted, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return false;
  if (!EqualNoCase(wanted, last_wanted)) last_number = 0;
  CopyWide(last_wanted, MAX_PATH, wanted);
  const int32_t number = ++last_number;
  const wchar_t* dot = FindLastWide(FileNameOf(wanted), L'.');
  if (!dot) dot = wanted + length;
  CopyWide(path, MAX_PATH, wanted, dot - wanted);
  if (number > 1) {
    wchar_t digits[12];
    FormatDecimal(digits, number);
    if (!AppendWide(path, MAX_PATH, L"-") || !AppendWide(path, MAX_PATH, digits)) return false;
  }
  return AppendWide(path, MAX_PATH, dot);
}

// Whether a variable has this value.
bool IsSetTo(const wchar_t* variable, const wchar_t* word) noexcept {
  wchar_t text[16];
  const DWORD length = GetEnvironmentVariableW(variable, text, 16);
  return length > 0 && length < 16 && EqualAsciiNoCase(text, word);
}

}  // namespace

bool SinkWanted() noexcept {
  return GetEnvironmentVariableW(kSinkVariable, nullptr, 0) > 1;
}

MMRESULT OpenSink(HWAVEOUT* device, const WAVEFORMATEX* format, DWORD_PTR callback,
                  DWORD flags) noexcept {
  if (!format) return MMSYSERR_INVALPARAM;
  if (format->wFormatTag != WAVE_FORMAT_PCM || format->nAvgBytesPerSec == 0 ||
      format->nBlockAlign == 0) {
    return WAVERR_BADFORMAT;
  }
  if (flags & WAVE_FORMAT_QUERY) return MMSYSERR_NOERROR;
  if (!device) return MMSYSERR_INVALPARAM;
  const DWORD kind = flags & CALLBACK_TYPEMASK;
  if (kind != CALLBACK_NULL && kind != CALLBACK_EVENT) return MMSYSERR_NOTSUPPORTED;
  const HANDLE event = kind == CALLBACK_EVENT ? reinterpret_cast<HANDLE>(callback) : nullptr;

  LockGuard guard(sinks_lock);
  wchar_t path[MAX_PATH];
  const bool silence = IsSetTo(kSinkVariable, kSilence);
  if (!silence && !NextPath(path)) return MMSYSERR_ERROR;
  if (!sinks.Reserve(sinks.size() + 1)) return MMSYSERR_NOMEM;
  const Pace pace = IsSetTo(kPaceVariable, L"fast") ? Pace::kFast : Pace::kRealTime;
  SinkDevice* const opened = SinkDevice::Open(silence ? nullptr : path, *format, pace, event);
  if (!opened) return MMSYSERR_ERROR;
  static_cast<void>(sinks.Append(opened));  // room is reserved
  *device = reinterpret_cast<HWAVEOUT>(opened);
  return MMSYSERR_NOERROR;
}

SinkDevice* FindSink(HWAVEOUT handle) noexcept {
  LockGuard guard(sinks_lock);
  for (SinkDevice* sink : sinks) {
    if (reinterpret_cast<HWAVEOUT>(sink) == handle) return sink;
  }
  return nullptr;
}

MMRESULT CloseSink(SinkDevice* device) noexcept {
  const MMRESULT result = device->Close();
  if (result != MMSYSERR_NOERROR) return result;
  {
    LockGuard guard(sinks_lock);
    for (size_t i = 0; i < sinks.size(); ++i) {
      if (sinks[i] == device) sinks.RemoveAt(i--);
    }
  }
  HeapDelete(device);
  return result;
}

}  // namespace kelvo
