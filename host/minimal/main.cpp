// A whole host in C++: plays an Ogg Vorbis file, then shows the bookmarks.   main FILE.ogg
#include <kelvo/bookmarks.h>
#include <kelvo/features.h>
#include <kelvo/messages.h>
#include <kelvo/ogg_vorbis_input.h>
#include <stdio.h>
#include <windows.h>

namespace {

// The bytes of the file, as the plug-in asks for them.
class Reader : public kelvo::MediaReader {
 public:
  int64_t Seek(int64_t offset, uint32_t origin) noexcept override {
    return _fseeki64(file_, offset, static_cast<int>(origin)) == 0 ? _ftelli64(file_)
                                                                   : kelvo::kSeekFailed;
  }
  int32_t Read(void* destination, uint32_t bytes, uint32_t* bytes_read) noexcept override {
    *bytes_read = static_cast<uint32_t>(fread(destination, 1, bytes, file_));
    return !ferror(file_);
  }
  int32_t Close() noexcept override {  // comes twice
    if (file_) fclose(file_);
    file_ = nullptr;
    return 1;
  }
  int32_t Open(const wchar_t* path, uint32_t) noexcept override {
    file_ = _wfopen(path, L"rb");
    return file_ != nullptr;
  }
  int32_t Release(kelvo::HostWord, kelvo::HostWord) noexcept override { return 1; }

 private:
  FILE* file_ = nullptr;
};

// The sound device. The plug-in's buffers are the device's: both are WAVEHDRs.
class Output : public kelvo::AudioOutput {
 public:
  explicit Output(HWND window) noexcept : window_(window) {}

  int32_t Open(uint32_t count, uint32_t bytes, uint32_t channels, uint32_t rate,
               uint32_t bits) noexcept override {
    const auto frame = static_cast<WORD>(channels * bits / 8);
    const WAVEFORMATEX format = {WAVE_FORMAT_PCM, static_cast<WORD>(channels), rate, rate * frame,
                                 frame,           static_cast<WORD>(bits),     0};
    if (waveOutOpen(&device_, WAVE_MAPPER, &format, 0, 0, CALLBACK_NULL) != 0) {
      PostMessageW(window_, kelvo::kMessageEndOfPlayback, 0, 0);  // the plug-in posts none then
      return 0;
    }
    for (uint32_t i = 0; i < count; ++i) {
      headers_[i].lpData = data_[i];
      headers_[i].dwBufferLength = bytes;
      waveOutPrepareHeader(device_, &headers_[i], sizeof(WAVEHDR));
    }
    return 1;
  }
  void Close() noexcept override {
    waveOutReset(device_);
    waveOutClose(device_);
    device_ = nullptr;
  }
  kelvo::OutputBuffer* GetBuffer() noexcept override {
    for (;; Sleep(1)) {  // until one has been played, or Reset has returned all
      for (WAVEHDR& header : headers_) {
        if (!IsQueued(header)) return reinterpret_cast<kelvo::OutputBuffer*>(&header);
      }
    }
  }
  int32_t Write(kelvo::OutputBuffer* buffer, uint32_t) noexcept override {
    return waveOutWrite(device_, reinterpret_cast<WAVEHDR*>(buffer), sizeof(WAVEHDR)) == 0;
  }
  void Pause(uint32_t pause) noexcept override {
    pause ? waveOutPause(device_) : waveOutRestart(device_);
  }
  void Reset() noexcept override { waveOutReset(device_); }
  uint32_t PlayedSamples(kelvo::HostWord, kelvo::HostWord) noexcept override {
    MMTIME time = {};
    time.wType = TIME_SAMPLES;
    waveOutGetPosition(device_, &time, sizeof(time));
    return time.u.sample;
  }
  int32_t Drained() noexcept override {
    for (const WAVEHDR& header : headers_) {
      if (IsQueued(header)) return 0;
    }
    return 1;
  }

 private:
  static bool IsQueued(const WAVEHDR& header) { return (header.dwFlags & WHDR_INQUEUE) != 0; }

  HWND window_;
  HWAVEOUT device_ = nullptr;
  WAVEHDR headers_[8] = {};
  char data_[8][16384];
};

}  // namespace

int wmain(int count, wchar_t** words) {
  const HWND window =
      CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 240, 320, nullptr, nullptr, nullptr, nullptr);
  const HMODULE library = LoadLibraryW(L"Kelvo.dll");
  const auto get_feature = reinterpret_cast<kelvo::GetFeatureFunction>(
      reinterpret_cast<void*>(GetProcAddress(library, "GetFeature")));
  if (!get_feature) puts("Kelvo.dll, or a DLL that it needs, is not beside this program");
  if (!get_feature || count != 2) return 1;

  static Reader reader;
  static Output output(window);
  auto* ogg = static_cast<kelvo::OggVorbisInput*>(get_feature(kelvo::kFeatureOggVorbis));
  ogg->SetReader(&reader);
  ogg->SetOutput(&output);
  ogg->SetNotifyWindow(window);
  if (!ogg->Open(words[1], 0)) return puts("not an Ogg Vorbis file"), 1;
  ogg->Play();
  MSG message = {};
  while (GetMessageW(&message, nullptr, 0, 0) > 0 &&
         message.message != kelvo::kMessageEndOfPlayback) {
    DispatchMessageW(&message);
  }
  ogg->Stop();
  ogg->Close(0, 0);

  auto* bookmarks = static_cast<kelvo::Bookmarks*>(get_feature(kelvo::kFeatureBookmarks));
  bookmarks->LoadBookmarks();
  bookmarks->SetLastPlayed(words[1], 0, words[1]);
  bookmarks->ShowBookmarks(window);
  FreeLibrary(library);
  return 0;
}
