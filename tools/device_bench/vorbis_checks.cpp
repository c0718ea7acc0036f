#include <stdio.h>

#include <filesystem>

#include "checks.h"
#include "reference_decoder.h"
#include "vorbis_player.h"

namespace bench {
namespace {

using Player = VorbisPlayer;

constexpr char16_t kTitle[] = u"Sine and Saw - Test Tone \u00e9\u20ac";

uint32_t BufferBytes(uint32_t sample_rate) {
  return sample_rate > 22050 ? 16384 : sample_rate > 11025 ? 8192 : 4096;
}

// Where a host may look for the plug-in's fields.
enum Field : uint32_t {
  kStreamField = 24,
  kTotalField = 28,
  kReservedField = 32,
  kChannelsField = 40,
  kRateField = 44,
  kMoreReservedField = 52,
  kThreadField = 60,
  kPriorityField = 64,
  kDepthField = 96,
  kPathField = 100,
  kBufferBytesField = 624,
  kRunOutputField = 636,
  kSeekBaseField = 644,
};

uint32_t FieldOf(Player& player, uint32_t offset) {
  return player.process.machine.Word(player.plugin + offset);
}

void CheckOpen(Report& report, Player& player, const Decoded& here, const std::string& media) {
  report.Equal("no thread was started yet", FieldOf(player, kThreadField), 0xFFFFFFFFu);
  report.Equal("priority of the thread", FieldOf(player, kPriorityField), 3u);
  player.process.machine.SetWord(player.plugin + kReservedField, 9);
  player.process.machine.SetWord(player.plugin + kMoreReservedField + 4, 9);
  report.Check("open", player.Open(u"\\Music\\Test.ogg"));
  report.Equal("field: total frames", FieldOf(player, kTotalField),
               static_cast<uint32_t>(here.pcm.size()) / (2 * here.channels));
  report.Equal("field: channels", FieldOf(player, kChannelsField), here.channels);
  report.Equal("field: rate", FieldOf(player, kRateField), here.sample_rate);
  report.Equal("fields: reserved words",
               FieldOf(player, kReservedField) | FieldOf(player, kMoreReservedField + 4), 0u);
  report.Equal("field: path", player.process.machine.Wide(player.plugin + kPathField),
               u"\\Music\\Test.ogg");
  const uint32_t stream = FieldOf(player, kStreamField);
  report.Equal("the stream's source", player.process.machine.Word(stream), player.reader.object());
  report.Equal("and what follows it", player.process.machine.Word(stream + 4), 0u);
  report.Equal("the reader was handed the path", player.reader.opened_path(), u"\\Music\\Test.ogg");
  report.Check("title from the comments", player.Title() == kTitle);
  report.Equal("length in milliseconds", player.LengthMs(),
               static_cast<uint32_t>(here.seconds() * 1000));
  const uint32_t info = player.process.heap.TakeZeroed(80);
  player.Slot(2, {info});
  report.Equal("genre", player.process.machine.Wide(info), u"Noise");
  report.Equal("sample rate", player.process.machine.Word(info + 64), here.sample_rate);
  report.Equal("stereo", player.process.machine.Word(info + 72), here.channels == 2 ? 1u : 0u);
  report.Equal("track", player.process.machine.Word(info + 76), 7u);
  player.process.heap.Give(info);

  // By its own path, from the folder of this machine.
  const std::string name = "\\" + std::filesystem::path(media).filename().string();
  const uint32_t path = player.process.heap.Take(520);
  const uint32_t artist = player.process.heap.Take(520);
  const uint32_t length = player.process.heap.Take(4);
  player.process.machine.SetWide(path, std::u16string(name.begin(), name.end()));
  report.Equal("information by path",
               player.Slot(16, {path, player.text, 0, 0, length, 0, artist, 0}), 1u);
  report.Check("its display title", player.process.machine.Wide(player.text) == kTitle);
  report.Equal("its artist", player.process.machine.Wide(artist), u"Sine and Saw");
  report.Equal("its length", player.process.machine.Word(length), player.LengthMs());
  for (const uint32_t block : {path, artist, length}) player.process.heap.Give(block);
}

void CheckPlaying(Report& report, Player& player, const Decoded& here,
                  const std::vector<uint8_t>& file) {
  report.Equal("play", player.Play(), 1u);
  report.Equal("state while playing", player.PlaybackState(), uint32_t{Player::kPlaying});
  report.Equal("play while playing", player.Play(), 0u);
  report.Equal("buffer size", player.output.buffer_bytes(), BufferBytes(here.sample_rate));
  report.Equal("field: buffer size", FieldOf(player, kBufferBytesField),
               BufferBytes(here.sample_rate));
  report.Equal("field: the output runs", FieldOf(player, kRunOutputField), 1u);
  report.Equal("field: depth of the lock", FieldOf(player, kDepthField), 0u);
  report.Check("field: thread", player.process.thread_handles.count(FieldOf(player, kThreadField)));
  report.Check("the thread got its priority", player.process.priorities.count(3) == 1);
  report.Check("plays to its end", player.PlayToEnd());
  report.Check("PCM is bit-identical to this machine's decoder", player.output.pcm() == here.pcm);
  report.Equal("messages at the end", player.TakeEndMessages(), size_t{1});
  report.Equal("state at the end", player.PlaybackState(), uint32_t{Player::kStopped});
  report.Check("the output is closed", !player.output.open());
  report.Equal("underruns", player.output.underruns(), 0u);

  const int32_t target = static_cast<int32_t>(player.LengthMs() / 2);
  report.Check("seek to the middle while stopped", player.SeekMs(target) != 0);
  report.Equal("field: seek base", FieldOf(player, kSeekBaseField),
               static_cast<uint32_t>(int64_t{here.sample_rate} * target / 1000));
  report.Equal("play after the seek", player.Play(), 1u);
  report.Check("half a second is played", player.RunUntilPlayed(here.sample_rate / 2));
  report.Check("seek to the start while playing", player.SeekMs(-5) != 0);
  report.Check("a bit is played", player.RunUntilPlayed(here.sample_rate / 4));
  const uint32_t position = player.PositionMs();
  report.Check("position", position >= 250 && position < 2000);
  report.Check("seek to the middle while playing", player.SeekMs(target) != 0);
  report.Equal("seek to the end is refused", player.SeekMs(static_cast<int32_t>(player.LengthMs())),
               0u);
  report.Check("plays to its end", player.PlayToEnd());
  const int64_t sample = int64_t{here.sample_rate} * target / 1000;
  report.Check("PCM after the seek is bit-identical",
               player.output.pcm() == DecodeHere(file, sample).pcm);
  report.Equal("messages after the seek", player.TakeEndMessages(), size_t{1});
}

void CheckPauseAndStop(Report& report, Player& player, const Decoded& here) {
  report.Check("back to the start", player.SeekMs(0) != 0);
  report.Equal("play again", player.Play(), 1u);
  report.Check("a quarter second is played", player.RunUntilPlayed(here.sample_rate / 4));
  player.TogglePause();
  report.Equal("state while paused", player.PlaybackState(), uint32_t{Player::kPaused});
  const uint32_t played = player.output.PlayedFrames();
  player.process.threads.RunUntil([] { return false; }, 3000000);
  report.Equal("nothing is played while paused", player.output.PlayedFrames(), played);
  report.Equal("play resumes", player.Play(), 1u);
  report.Check("it goes on", player.RunUntilPlayed(played + here.sample_rate / 4));
  report.Equal("stop", player.Stop(), 0u);
  report.Equal("field: no thread any more", FieldOf(player, kThreadField), 0u);
  report.Equal("threads left", player.process.threads.running(), 0u);
  report.Equal("messages after a stop", player.TakeEndMessages(), size_t{0});
  report.Equal("state after a stop", player.PlaybackState(), uint32_t{Player::kStopped});

  player.output.FailNextOpen();
  report.Equal("play on a device that does not open", player.Play(), 1u);
  report.Check("its thread ends", player.PlayToEnd());
  report.Equal("its state", player.PlaybackState(), uint32_t{Player::kStopped});
  report.Equal("its messages", player.TakeEndMessages(), size_t{0});
  report.Equal("stop afterwards", player.Stop(), 0u);
}

// Every early request for memory fails once, then samples of the later ones.
void CheckMemory(Report& report, Player& player, uint32_t blocks_before) {
  report.Equal("blocks left after close", player.process.heap.blocks(), blocks_before);
  int failures = 0;
  bool clean = true;
  for (int64_t request = 0;; request += request < 40 ? 1 : 13) {
    player.process.heap.FailFrom(request);
    const bool opened = player.Open(u"\\Test.ogg");
    player.process.heap.FailFrom(-1);
    if (opened) break;
    ++failures;
    clean = clean && player.process.heap.blocks() == blocks_before;
  }
  report.Check("opening fails without memory, " + std::to_string(failures) + " times",
               failures > 40);
  report.Check("and leaves nothing behind", clean);
  report.Equal("the reader's close is handed on", player.Close(), 5u);
}

}  // namespace

void CheckVorbis(Report& report, const std::string& dll, const std::string& media) {
  printf("%s\n", media.c_str());
  const std::vector<uint8_t> file = ReadFileHere(media);
  const Decoded here = DecodeHere(file);
  Player player(dll, file, std::filesystem::path(media).parent_path().string());
  player.process.machine.RefuseUnaligned();
  const uint32_t blocks_before = player.process.heap.blocks();
  CheckOpen(report, player, here, media);
  CheckPlaying(report, player, here, file);
  CheckPauseAndStop(report, player, here);
  report.Equal("the reader's close is handed on", player.Close(), 5u);
  CheckMemory(report, player, blocks_before);
  // Of the 64 KB that a thread of the system gets; the host's own frames need room as well.
  report.Check("stacks stay below 12 KB", player.process.threads.deepest_stack() < 12 * 1024);
  report.Equal("detach", player.process.Detach(), 1u);
  report.Equal("thread handles left", player.process.thread_handles.size(), size_t{0});
  report.Equal("events left", player.process.events.size(), size_t{0});
  report.Equal("blocks that the library leaves", player.process.heap.blocks(),
               player.blocks_before_load);
}

void CheckHostileVorbis(Report& report, const std::string& dll, const std::string& path) {
  printf("%s\n", path.c_str());
  Player player(dll, ReadFileHere(path), ".");
  const uint32_t blocks_before = player.process.heap.blocks();
  report.Check("open", player.Open(u"\\Test.ogg"));
  for (const int32_t ms : {100, 0, 1500}) {
    player.SeekMs(ms);
    report.Equal("play", player.Play(), 1u);
    report.Check("it comes to an end", player.PlayToEnd());
    player.Stop();
  }
  player.Close();
  report.Equal("blocks left after close", player.process.heap.blocks(), blocks_before);
}

void MeasureVorbis(Report& report, const std::string& dll, const std::string& raw_decoder,
                   const std::vector<std::string>& media) {
  for (const std::string& path : media) {
    const std::string name = std::filesystem::path(path).stem().string();
    const std::vector<uint8_t> file = ReadFileHere(path);
    const Decoded here = DecodeHere(file);
    printf("%s: %.2f s of audio\n", name.c_str(), here.seconds());
    const double per_second = 1e-6 / here.seconds();
    {
      Process process(".");
      process.Load(raw_decoder);
      process.Attach();
      const uint32_t decode = process.CallExport("GetFeature", {0});
      const uint32_t bytes = static_cast<uint32_t>(file.size());
      const uint32_t room = static_cast<uint32_t>(here.pcm.size()) + 65536;
      const uint32_t data = process.heap.Take(bytes);
      const uint32_t pcm = process.heap.Take(room);
      std::copy(file.begin(), file.end(), process.machine.At(data, bytes));
      const uint64_t before = process.machine.instructions();
      const uint32_t got = process.Call(decode, {data, bytes, pcm, room});
      const uint64_t used = process.machine.instructions() - before;
      report.Check("raw decoder: PCM is bit-identical",
                   got == here.pcm.size() &&
                       std::equal(here.pcm.begin(), here.pcm.end(), process.machine.At(pcm, got)));
      report.Figure("raw_" + name, static_cast<double>(used) * per_second);
    }
    Player player(dll, file, ".");
    const uint64_t loaded = player.process.machine.instructions();
    report.Check("open", player.Open(u"\\Test.ogg"));
    const uint64_t opened = player.process.machine.instructions();
    const uint64_t calls = player.process.import_calls();
    player.Play();
    report.Check("plays to its end", player.PlayToEnd() && player.output.pcm() == here.pcm);
    const uint64_t used = player.process.machine.instructions() - loaded;
    report.Figure("play_" + name, static_cast<double>(used) * per_second);
    printf(
        "     opening: %.2f M instructions; %.0f system calls per second of audio; heap %u KB; "
        "deepest stack %u bytes\n",
        static_cast<double>(opened - loaded) * 1e-6,
        static_cast<double>(player.process.import_calls() - calls) / here.seconds(),
        player.process.heap.peak_bytes() / 1024, player.process.threads.deepest_stack());
    player.Close();
  }
}

}  // namespace bench
