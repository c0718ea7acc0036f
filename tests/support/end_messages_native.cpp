#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>

#include "base/sync/thread.h"
#include "kelvo/messages.h"
#include "tests/support/end_messages.h"

namespace kelvo::test {
namespace {

std::mutex g_mutex;
std::condition_variable g_arrived;
int g_count = 0;
char g_window;

void OnPost(void* window, uint32_t message, uintptr_t wparam, intptr_t lparam) {
  EXPECT_EQ(window, &g_window);
  EXPECT_EQ(message, kMessageEndOfPlayback);
  EXPECT_TRUE(wparam == 0 && lparam == 0);
  std::lock_guard<std::mutex> guard(g_mutex);
  ++g_count;
  g_arrived.notify_all();
}

}  // namespace

EndMessages::EndMessages() : window_(&g_window) {
  Clear();
  SetPostHook(OnPost);
}
EndMessages::~EndMessages() {
  SetPostHook(nullptr);
}

void EndMessages::WaitForNext() {
  std::unique_lock<std::mutex> guard(g_mutex);
  g_arrived.wait(guard, [] { return g_count > 0; });
  --g_count;
}

int EndMessages::count() {
  std::lock_guard<std::mutex> guard(g_mutex);
  return g_count;
}

void EndMessages::Clear() {
  std::lock_guard<std::mutex> guard(g_mutex);
  g_count = 0;
}

}  // namespace kelvo::test
