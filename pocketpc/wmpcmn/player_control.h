#pragma once

#include <windows.h>

#include <ocidl.h>
#include <ole2.h>

#include "pocketpc/support/module.h"
#include "pocketpc/wmpcmn/event_source.h"
#include "pocketpc/wmpcmn/player_engine.h"

namespace kelvo {

class PlayerControl;

// The control's own interface. It has far more methods than anybody here calls, so it is no C++
// interface but a table, filled at the positions that base/windows/player_control.h names.
struct PlayerMethods {
  explicit PlayerMethods(PlayerControl* owner) noexcept;

  void* const* table;  // first, as in every COM interface
  PlayerControl* control;
};

// The player control: an OLE object without a window, with a connection point for its events and
// the method table through which it plays. Made and called in the multithreaded apartment.
class PlayerControl final : public ComObject<PlayerControl, IOleObject, IConnectionPointContainer> {
 public:
  PlayerControl() noexcept : methods_(this) {}
  ~PlayerControl();

  // To be called once, before anything else.
  HRESULT Initialise() noexcept;
  PlayerEngine& player() noexcept { return *player_; }

  void* FindInterface(REFIID iid) noexcept;

  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** out) override;
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** out) override;

  HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override;
  HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite** site) override;
  HRESULT STDMETHODCALLTYPE Close(DWORD save) override;
  HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID* id) override;
  HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD aspect, DWORD* status) override;
  // An invisible control accepts every verb, size and name, and has nothing to copy or enumerate.
  HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD, IDataObject**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE DoVerb(LONG, LPMSG, IOleClientSite*, LONG, HWND, LPCRECT) override {
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Update() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE IsUpToDate() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetUserType(DWORD, LPOLESTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetExtent(DWORD, SIZEL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetExtent(DWORD, SIZEL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Advise(IAdviseSink*, DWORD*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }

 private:
  PlayerMethods methods_;
  ComPtr<IOleClientSite> site_;
  ComPtr<EventSource> events_;
  PlayerEngine* player_ = nullptr;  // ours until Quit
};

}  // namespace kelvo
