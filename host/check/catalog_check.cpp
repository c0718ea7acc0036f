// The catalog, as far as it goes without files.
#include "host/check/subject.h"

namespace velmora::check {
namespace {

void KELVO_CDECL Receive(const wchar_t*, KelvoHostWord cookie) {
  ++*reinterpret_cast<int*>(cookie);
}

}  // namespace

void CheckCatalog(const Subject& subject, Report& report) {
  report.Begin("Catalog");
  if (!subject.windows) return report.LeavesOut("ShowCatalog shows a window (--windows)");
  auto* catalog = subject.Get<KelvoCatalog>(KELVO_FEATURE_CATALOG);
  OwnRegistry registry;
  int received = 0;
  catalog->table->SetHostCallback(KELVO_ON(catalog), &Receive,
                                  reinterpret_cast<KelvoHostWord>(&received));
  const auto show = [&] {
    return catalog->table->ShowCatalog(KELVO_ON(catalog), GetModuleHandleW(nullptr),
                                       subject.window);
  };
  int32_t second = 9;
  WindowUser user(L"Playlist Organizer", [&](HWND sheet) {
    second = show();
    PostMessageW(sheet, WM_SYSCOMMAND, SC_CLOSE, 0);
  });
  const int32_t first = show();
  report.Says("ShowCatalog shows \"Playlist Organizer\" and answers 1 once it is closed",
              first == 1 && user.acted());
  report.Says("ShowCatalog answers 0 while it is open", second == 0);
  report.Says(
      "A catalog that is closed sends the host nothing",
      received == 0 && TakeMessage(subject.window, KELVO_MESSAGE_CATALOG_PLAY).message == 0);
  catalog->table->SetHostCallback(KELVO_ON(catalog), nullptr, 0);
}

}  // namespace velmora::check
