// An engine for each thread that runs the device's code. Making one takes a while, so that the
// engine of a thread that ended is the next thread's.
#include <windows.h>

#include <memory>
#include <mutex>
#include <vector>

#include "engine.h"

namespace bridge {
namespace {

struct Engines {
  std::mutex lock;  // of both lists
  std::vector<std::unique_ptr<Engine>> all;
  std::vector<Engine*> unused;
  DWORD slot = TlsAlloc();
  ~Engines() { TlsFree(slot); }
};
Engines* g_engines;

}  // namespace

Engine& CurrentEngine() {
  const DWORD error = GetLastError();
  Engine* engine = static_cast<Engine*>(TlsGetValue(g_engines->slot));
  if (!engine) {
    const std::lock_guard<std::mutex> guard(g_engines->lock);
    if (g_engines->unused.empty()) {
      g_engines->all.push_back(std::make_unique<Engine>());
      g_engines->unused.push_back(g_engines->all.back().get());
    }
    engine = g_engines->unused.back();
    g_engines->unused.pop_back();
    TlsSetValue(g_engines->slot, engine);
  }
  SetLastError(error);
  return *engine;
}

void StartEngines() {
  g_engines = new Engines;
}

void EndThread() {
  Engine* const engine = static_cast<Engine*>(TlsGetValue(g_engines->slot));
  if (!engine) return;
  TlsSetValue(g_engines->slot, nullptr);
  // A thread that ended in the middle of the device's code leaves an engine that is of no use.
  if (engine->running()) return;
  const std::lock_guard<std::mutex> guard(g_engines->lock);
  g_engines->unused.push_back(engine);
}

void CloseEngines() {
  delete g_engines;
  g_engines = nullptr;
}

}  // namespace bridge
