// A whole host in one file: decodes an Ogg Vorbis file into raw 16-bit PCM.
//
//   i686-w64-mingw32-g++ -std=c++17 -municode -static -I include
//       -o build/i686/bin/ogg_to_pcm.exe docs/ogg_to_pcm.cpp
//   scripts/wine.sh i686 build/i686/bin/ogg_to_pcm.exe IN.ogg OUT.pcm
#include <kelvo/features.h>
#include <kelvo/ogg_vorbis_input.h>
#include <stdio.h>
#include <windows.h>

namespace {

// The bytes of a file, as the plug-in asks for them.
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

// An output that is never busy: one buffer, written to a file at once. A real one has a ring of
// buffers, waits in GetBuffer until one has been played, and ends that wait in Reset.
class Output : public kelvo::AudioOutput {
 public:
  explicit Output(FILE* file) noexcept : file_(file) {}
  uint32_t bytes() const noexcept { return bytes_; }

  int32_t Open(uint32_t, uint32_t buffer_bytes, uint32_t, uint32_t, uint32_t) noexcept override {
    if (buffer_bytes > sizeof(data_)) return 0;
    buffer_.data = data_;
    buffer_.length_bytes = buffer_bytes;
    return 1;
  }
  void Close() noexcept override {}
  kelvo::OutputBuffer* GetBuffer() noexcept override { return &buffer_; }
  int32_t Write(kelvo::OutputBuffer* buffer, uint32_t) noexcept override {
    bytes_ += static_cast<uint32_t>(fwrite(buffer->data, 1, buffer->valid_bytes, file_));
    return 1;
  }
  void Pause(uint32_t) noexcept override {}
  void Reset() noexcept override {}
  uint32_t PlayedSamples(kelvo::HostWord, kelvo::HostWord) noexcept override { return bytes_ / 4; }
  int32_t Drained() noexcept override { return 1; }

 private:
  FILE* file_;
  uint32_t bytes_ = 0;
  kelvo::OutputBuffer buffer_ = {};
  char data_[16384];
};

int Fail(const char* why) {
  fprintf(stderr, "%s\n", why);
  return 1;
}

}  // namespace

int wmain(int count, wchar_t** words) {
  if (count != 3) return Fail("usage: ogg_to_pcm IN.ogg OUT.pcm");
  const HMODULE library = LoadLibraryW(L"Kelvo.dll");
  if (!library) return Fail("Kelvo.dll, or a DLL that it needs, is not beside this program");
  const auto get_feature = reinterpret_cast<kelvo::GetFeatureFunction>(
      reinterpret_cast<void*>(GetProcAddress(library, "GetFeature")));
  auto* ogg = static_cast<kelvo::OggVorbisInput*>(get_feature(kelvo::kFeatureOggVorbis));
  FILE* pcm = _wfopen(words[2], L"wb");
  if (!pcm) return Fail("the output cannot be written");

  Reader reader;
  Output output(pcm);
  ogg->SetReader(&reader);
  ogg->SetOutput(&output);
  const bool plays = ogg->Open(words[1], 0) && ogg->Play();
  // A host with windows is told by a message (SetNotifyWindow) instead.
  while (plays && ogg->GetState() != kelvo::kStopped) Sleep(10);
  ogg->Stop();
  ogg->Close(0, 0);
  ogg->SetOutput(nullptr);
  ogg->SetReader(nullptr);
  fclose(pcm);
  FreeLibrary(library);
  if (!plays) return Fail("not an Ogg Vorbis file");
  printf("%u bytes\n", output.bytes());
  return 0;
}
