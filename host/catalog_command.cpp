#include <kelvo/catalog.h>
#include <kelvo/messages.h>

#include <vector>

#include "host/command.h"
#include "host/console.h"
#include "host/device_drive.h"
#include "host/play_command.h"

namespace velmora {
namespace {

// What the catalog has sent. The host's list, as a player would keep it.
struct Received {
  std::vector<std::wstring> list;
  bool play = false;
};

void __cdecl OnPath(const wchar_t* path, kelvo::HostWord cookie) {
  Received& received = *reinterpret_cast<Received*>(cookie);
  if (path == kelvo::kCatalogClearList) {
    Print(L"callback: clear\n");
    received.list.clear();
  } else if (path == kelvo::CatalogEndOfList()) {
    Print(L"callback: end\n");
  } else {
    Print(L"callback: %ls\n", path);
    received.list.push_back(path);
  }
}

LRESULT CALLBACK ParentProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == kelvo::kMessageCatalogPlay || message == kelvo::kMessageCatalogPlayed) {
    Print(L"message: WM_USER + %u\n", message - WM_USER);
    auto* received = reinterpret_cast<Received*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    received->play = true;
    return 0;
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

HWND CreateParent(Received* received) {
  WNDCLASSW window_class = {};
  window_class.lpfnWndProc = &ParentProcedure;
  window_class.hInstance = GetModuleHandleW(nullptr);
  window_class.lpszClassName = L"VelmoraHost";
  RegisterClassW(&window_class);
  const HWND window = CreateWindowExW(0, L"VelmoraHost", L"Velmora", WS_POPUP, 0, 0, 0, 0, nullptr,
                                      nullptr, window_class.hInstance, nullptr);
  SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(received));
  return window;
}

void HandleMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}

// Shows the catalog with `device`, an existing folder, as the device: what happens in it is
// printed, what the user plays is played when the sheet is closed.
int ShowCatalog(const Library& library, const std::wstring& device) {
  auto* catalog = library.Get<kelvo::Catalog>(kelvo::kFeatureCatalog);
  if (!catalog) {
    PrintError(L"Kelvo.dll does not offer the catalog\n");
    return 1;
  }
  const DeviceDrive drive(device);
  if (!drive.ready()) {
    PrintError(L"%ls: cannot be made a drive\n", device.c_str());
    return 1;
  }
  Received received;
  const HWND parent = CreateParent(&received);
  catalog->SetHostCallback(&OnPath, reinterpret_cast<kelvo::HostWord>(&received));
  const int32_t shown = catalog->ShowCatalog(GetModuleHandleW(nullptr), parent);
  Print(L"ShowCatalog: %d\n", shown);
  HandleMessages();
  catalog->SetHostCallback(nullptr, 0);
  DestroyWindow(parent);
  if (!received.play || received.list.empty()) return shown ? 0 : 1;
  PlayOptions options;
  options.files = received.list;
  return Play(library, options);
}

}  // namespace

int CatalogCommand(const Library& library, const Words& words) {
  if (words.empty()) return ShowCatalog(library, L"device");
  if (words.size() == 2 && words[0] == L"--device") return ShowCatalog(library, words[1]);
  PrintError(L"velmora: catalog takes --device DIR only\n");
  return 1;
}

}  // namespace velmora
