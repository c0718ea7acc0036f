// Every order in which the host's thread and the decoding thread can come to what they share.
#include <gtest/gtest.h>
#include <regex.h>
#include <string.h>

#include <algorithm>
#include <map>
#include <set>

#include "tests/schedules/exploration.h"
#include "tests/schedules/scheduler.h"
#include "tests/schedules/scripted_media.h"

namespace kelvo {
namespace {

using test::Fail;
using test::g_output;
using test::g_world;
using test::Pace;
using test::World;

// All that a decoding thread may do, from its start to its end.
constexpr char kThreadCalls[] =
    "^(Oc1"               // no output
    "|o2(w?g|d|Rr?)*(c1"  // a stop
    "|xc1m"               // an error: nothing is drained
    "|ew?(nr?z)*(qc1m"    // the end
    "|c1m"                // a stop while it drains
    "|m)))$";             // a seek while it drains: all stays as it is
constexpr char kLeftOpen[] = "zm$";

// What an operation of the host may do in a state that it found, and its result. "held": whether
// there is a thread, even one that has ended, which was not stopped. -1 is any, in the result: see
// Do().
const struct Row {
  char operation;
  int state, held;
  const char* calls;
  int result;
} kRows[] = {
    {'P', 1, 0, "", 1},     {'P', 1, 1, "R", 1},   {'P', 2, -1, "", 0},     {'P', 3, -1, "r2", 1},
    {'p', 1, 0, "", 0},     {'p', 1, 1, "R", 0},   {'p', 2, -1, "", 0},     {'p', 3, -1, "r2", 1},
    {'T', 1, -1, "", 0},    {'T', 2, -1, "3p", 0}, {'T', 3, -1, "r2", 0},   {'S', -1, -1, "kR", 1},
    {'0', -1, -1, "kR", 1}, {'s', -1, -1, "", 0},  {'f', -1, -1, "k", 0},   {'Z', -1, 0, "", 0},
    {'Z', -1, 1, "R", 0},   {'k', -1, -1, "l", 0}, {'C', -1, 0, "lFKK", 7}, {'A', -1, -1, "a", 1},
    {'G', -1, -1, "", -1},  {'L', -1, -1, "", -1}, {'D', -1, 0, "FK", 0},   {'D', -1, 1, "RFK", 0},
};

struct Script {
  const char* name;
  Pace pace;
  int64_t frames;
  int64_t error_at;
  bool open_fails;
};
// Nine reads fill three buffers and a bit; two do not fill one.
constexpr Script kScripts[] = {{"fills", Pace::kAtOnce, 6700, -1, false},
                               {"drains as it goes", Pace::kAsItDrains, 6700, -1, false},
                               {"waits for a buffer", Pace::kHeld, 13000, -1, false},
                               {"drains", Pace::kHeld, 2000, -1, false},
                               {"error", Pace::kAtOnce, 6700, 4500, false},
                               {"no output", Pace::kAtOnce, 6700, -1, true}};

const Script* g_script;
const char* g_operations;
test::ScriptedReader g_reader;
alignas(test::WatchedPlugin) char g_plugin_room[sizeof(test::WatchedPlugin)];

bool Matches(const char* expression, const std::string& text) {
  static std::map<const char*, std::set<std::string>> matching;
  std::set<std::string>& known = matching[expression];
  if (known.count(text)) return true;
  regex_t compiled;
  EXPECT_EQ(regcomp(&compiled, expression, REG_EXTENDED | REG_NOSUB), 0);
  const bool matches = regexec(&compiled, text.c_str(), 0, nullptr, 0) == 0;
  regfree(&compiled);
  if (matches) known.insert(text);
  return matches;
}

// The one operation that `plugin` carries out; its result when the table has to know it.
int32_t Call(OggVorbisPlugin& plugin, char operation) {
  g_reader.keeps = operation == 'k';
  g_world.seek_fails = operation == 'f';
  test::g_no_threads = operation == 'p';
  switch (operation) {
    case 'P':
    case 'p':
      return plugin.Play();
    case 'T':
      return plugin.TogglePause();
    case 'S':
    case 'f':
      return plugin.SeekMs(125);
    case '0':
      return plugin.SeekMs(0);
    case 's':
      return plugin.SeekMs(plugin.GetLengthMs());
    case 'Z':
      return plugin.Stop();
    case 'k':
    case 'C':
      return plugin.Close(1, 2);
    case 'A':
      return plugin.Open(L"x.ogg", 0);
    case 'L':
      return plugin.GetLengthMs();
    case 'G':
      return plugin.GetPositionMs(3, 4);
    case 'D':
      plugin.Destroy(0);
  }
  return 0;
}

// The number that a result of -1 stands for.
bool IsNumber(char operation, int32_t result) {
  if (operation == 'L') return result == g_world.frames * 1000 / test::kRate;
  const auto ms = [](uint32_t base) {
    return static_cast<int32_t>((base + g_world.answered) * 1000.0 / test::kRate);
  };
  const bool ending = !g_world.base_sure || (g_world.Did("xqO") && !g_world.Did("c"));
  return result == ms(g_world.base) || result == ms(g_world.base_before) ||
         (ending && result == ms(0));
}

// What a thread did that has come to its end. True when it had to send the message.
bool CheckThread(const std::string& calls) {
  if (calls.empty()) return false;
  if (!Matches(kThreadCalls, calls)) Fail("the thread may not do " + calls);
  // What drains is started, once, unless it is paused.
  const auto drain = std::find(calls.begin(), calls.end(), 'e');
  const bool waited = std::find(drain, calls.end(), 'n') != calls.end();
  if (!g_world.toggled_late &&
      std::count(drain, calls.end(), 'r') != (waited && g_world.state_at_end == kPlaying)) {
    Fail("the last buffers are not started once");
  }
  return calls.back() == 'm';
}

void CheckNoThread() {
  if (test::ThreadLives()) return;
  if (g_world.messages != g_world.messages_due + CheckThread(g_world.thread)) {
    Fail("a message is lost");
  }
  if ((g_world.state != kStopped) != Matches(kLeftOpen, g_world.thread)) {
    Fail("the state " + std::to_string(g_world.state) + " without a thread");
  }
}

void Do(OggVorbisPlugin& plugin, char operation) {
  if (operation == 'E') return test::WaitForThread(true);
  g_world.host.clear();
  g_world.states_seen = 1u << g_world.state;
  g_world.all = g_world.all + ' ' + operation + ':';
  g_world.operation = operation;
  g_world.base_before = g_world.base;
  g_world.stop_asked |= strchr("ZDPp", operation) != nullptr;
  g_world.toggled_late |= strchr("TPp", operation) && g_world.Did("e");
  const bool over = g_world.Did("c");
  const int32_t result = Call(plugin, operation);
  g_world.operation = ' ';
  for (const Row& row : kRows) {
    if (row.operation != operation || g_world.host != row.calls ||
        (row.state >= 0 && !(g_world.states_seen & (1u << row.state))) ||
        (row.held >= 0 && row.held != (operation == 'Z' ? !g_world.joined : g_world.held)) ||
        (row.result < 0 ? !IsNumber(operation, result) : result != row.result)) {
      continue;
    }
    if (strchr("ZD", operation) || (strchr("Pp", operation) && row.state == 1)) {
      g_world.joined = operation != 'P' && (g_world.held || g_world.joined || operation == 'Z');
      g_world.held = operation == 'P';
    }
    if (strchr("ZA", operation)) g_world.pending = World::kNo;
    if (g_world.held && g_world.thread == "o") Fail("answers before it plays");
    if (operation == 'A') g_world.base = 0;
    if (strchr("AS0", operation))
      g_world.base_sure = operation == 'A' || over || !g_world.Did("xqO");
    return;
  }
  Fail(std::string("the operation ") + operation + " answers " + std::to_string(result) +
       " after " + g_world.host);
}

// The library goes while a thread is held up, or has been ended by the system: what such a thread
// uses stays, and of no other.
void Unload(OggVorbisPlugin& plugin, bool killed) {
  g_world.host.clear();
  const bool ran = test::ThreadLives();
  const bool may_be_over = !ran || (killed && Matches(kThreadCalls, g_world.thread));
  killed ? test::KillThread() : test::HoldThreadUp();
  plugin.~OggVorbisPlugin();
  if (g_world.host.empty() ? !ran : g_world.host != "FK" || !may_be_over) {
    Fail("what an unloaded thread uses");
  }
  test::DropStream();
}

void Host() {
  g_world.Clear();
  test::g_check_thread = CheckThread;
  g_world.pace = g_script->pace;
  g_world.frames = g_script->frames;
  g_world.error_at = g_script->error_at;
  g_world.open_fails = g_script->open_fails;
  OggVorbisPlugin& plugin = *new (g_plugin_room) test::WatchedPlugin();
  plugin.SetReader(&g_reader);
  plugin.SetOutput(&g_output);
  plugin.SetNotifyWindow(&g_world);
  Do(plugin, 'A');
  for (const char* operation = g_operations; *operation; ++operation) {
    if (strchr("UV", *operation)) return Unload(plugin, *operation == 'V');
    Do(plugin, *operation);
    if (*operation == 'D') {
      CheckNoThread();
      if (plugin.Play() || plugin.SeekMs(0)) Fail("a destroyed plug-in plays");
      return plugin.~OggVorbisPlugin();
    }
  }
  // Whatever was done, the file can be heard to its end, and once more, with a message each time.
  g_world.pace = Pace::kAtOnce;
  if (g_world.state == kPaused) Do(plugin, 'T');
  test::WaitForThread(false);
  if (test::ThreadLives()) Fail("the thread is stuck");
  CheckNoThread();
  test::StopSwitching();
  Do(plugin, 'Z');
  plugin.SetState(kStopped);
  g_world.error_at = -1;
  g_world.open_fails = false;
  Do(plugin, '0');
  const int before = g_world.messages;
  Do(plugin, 'P');
  test::WaitForThread(false);
  CheckNoThread();
  if (g_world.messages != before + 1) Fail("does not play once more");
  Do(plugin, 'Z');
  Do(plugin, 'C');
  plugin.~OggVorbisPlugin();
  if (test::g_stream) Fail("a stream is lost");
}

class Schedules : public test::Exploration {
 protected:
  void ExploreAll(const std::string& operations, int switches) {
    g_operations = operations.c_str();
    for (const Script& script : kScripts) {
      g_script = &script;
      if (!Explore(Host, switches)) break;
    }
  }
  std::string Scene() const override {
    return std::string(g_script->name) + ", " + g_operations + "\n" + g_world.all;
  }
};

constexpr const char* kOperations[] = {"P", "p", "T", "S",   "s", "f", "Z",
                                       "k", "G", "L", "ZCA", "D", "U", "V"};

TEST_F(Schedules, OfEachOperationInEachPhase) {
  for (const std::string operation : kOperations) {
    for (const char* before : {"P", "PE"}) ExploreAll(before + operation, Switches(2));
    for (const char* before : {"", "PT", "PS", "PES", "PSE", "PSZ", "SCA"}) {
      ExploreAll(before + operation, Switches(1));
    }
  }
}

TEST_F(Schedules, OfEachTwoOperations) {
  for (const std::string first : kOperations) {
    if (strchr("DUV", first[0])) continue;
    for (const char* second : kOperations) ExploreAll("P" + first + second, Switches(1));
  }
}

}  // namespace
}  // namespace kelvo
