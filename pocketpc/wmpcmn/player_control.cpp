#include "pocketpc/wmpcmn/player_control.h"

#include <olectl.h>

#include "input/wma/player_control.h"

namespace kelvo {

HRESULT PlayerControl::Initialise() noexcept {
  events_.Reset(HeapNew<EventSource>(this));
  if (events_) player_ = Player::Create(events_.get());
  return player_ ? S_OK : E_OUTOFMEMORY;
}

PlayerControl::~PlayerControl() {
  if (player_) player_->Quit();
  if (events_) events_->ForgetContainer();
}

void* PlayerControl::FindInterface(REFIID iid) noexcept {
  if (iid == IID_IUnknown || iid == IID_IOleObject) return static_cast<IOleObject*>(this);
  if (iid == IID_IConnectionPointContainer) return static_cast<IConnectionPointContainer*>(this);
  if (iid == kPlayerInterface || iid == IID_IDispatch) return &methods_;
  return nullptr;
}

HRESULT PlayerControl::EnumConnectionPoints(IEnumConnectionPoints** out) {
  if (out) *out = nullptr;
  return E_NOTIMPL;
}

HRESULT PlayerControl::FindConnectionPoint(REFIID iid, IConnectionPoint** out) {
  if (!out) return E_POINTER;
  *out = nullptr;
  if (iid != kPlayerEventInterface) return CONNECT_E_NOCONNECTION;
  *out = ComPtr<EventSource>::Share(events_.get()).Detach();
  return S_OK;
}

HRESULT PlayerControl::SetClientSite(IOleClientSite* site) {
  site_ = ComPtr<IOleClientSite>::Share(site);
  return S_OK;
}

HRESULT PlayerControl::GetClientSite(IOleClientSite** site) {
  if (!site) return E_POINTER;
  *site = ComPtr<IOleClientSite>::Share(site_.get()).Detach();
  return S_OK;
}

// The container's window goes away: silence, though the object may live on.
HRESULT PlayerControl::Close(DWORD) {
  return player_->Halt();
}

HRESULT PlayerControl::GetUserClassID(CLSID* id) {
  if (!id) return E_POINTER;
  *id = kPlayerClass;
  return S_OK;
}

HRESULT PlayerControl::GetMiscStatus(DWORD, DWORD* status) {
  if (!status) return E_POINTER;
  *status = OLEMISC_INVISIBLEATRUNTIME;
  return S_OK;
}

}  // namespace kelvo
