#include "pocketpc/wmpcmn/player_control.h"

#include <olectl.h>

#include "base/windows/player_control.h"

namespace kelvo {
namespace {

using Self = PlayerMethods*;

HRESULT STDMETHODCALLTYPE QueryInterface(Self self, REFIID iid, void** out) noexcept {
  return self->control->QueryInterface(iid, out);
}

ULONG STDMETHODCALLTYPE AddRef(Self self) noexcept {
  return self->control->AddRef();
}

ULONG STDMETHODCALLTYPE Release(Self self) noexcept {
  return self->control->Release();
}

// Nothing can be called by name: there is no type library.
HRESULT STDMETHODCALLTYPE GetTypeInfoCount(Self, UINT* count) noexcept {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT STDMETHODCALLTYPE GetTypeInfo(Self, UINT, LCID, ITypeInfo** info) noexcept {
  if (info) *info = nullptr;
  return DISP_E_BADINDEX;
}

HRESULT STDMETHODCALLTYPE GetIDsOfNames(Self, REFIID, LPOLESTR*, UINT, LCID, DISPID*) noexcept {
  return DISP_E_UNKNOWNNAME;
}

HRESULT STDMETHODCALLTYPE Invoke(Self, DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*,
                                 EXCEPINFO*, UINT*) noexcept {
  return DISP_E_MEMBERNOTFOUND;
}

// The settings shape a window and a user interface, and this control has neither.
HRESULT STDMETHODCALLTYPE PutSetting(Self, int32_t) noexcept {
  return S_OK;
}

HRESULT STDMETHODCALLTYPE GetPosition(Self self, double* seconds) noexcept {
  return seconds ? self->control->player().GetPosition(seconds) : E_POINTER;
}

HRESULT STDMETHODCALLTYPE PutPosition(Self self, double seconds) noexcept {
  return self->control->player().Seek(seconds);
}

HRESULT STDMETHODCALLTYPE GetDuration(Self self, double* seconds) noexcept {
  return seconds ? self->control->player().GetDuration(seconds) : E_POINTER;
}

HRESULT STDMETHODCALLTYPE Open(Self self, BSTR file) noexcept {
  return self->control->player().Open(file);
}

HRESULT STDMETHODCALLTYPE Play(Self self) noexcept {
  return self->control->player().Play();
}

HRESULT STDMETHODCALLTYPE Stop(Self self) noexcept {
  return self->control->player().Stop();
}

HRESULT STDMETHODCALLTYPE NotProvided(Self) noexcept {
  return E_NOTIMPL;
}

struct Table {
  void* methods[kPlayerStop + 1];

  Table() noexcept {
    for (void*& method : methods) method = reinterpret_cast<void*>(&NotProvided);
    const struct {
      int position;
      void* method;
    } provided[] = {
        {0, reinterpret_cast<void*>(&QueryInterface)},
        {1, reinterpret_cast<void*>(&AddRef)},
        {2, reinterpret_cast<void*>(&Release)},
        {3, reinterpret_cast<void*>(&GetTypeInfoCount)},
        {4, reinterpret_cast<void*>(&GetTypeInfo)},
        {5, reinterpret_cast<void*>(&GetIDsOfNames)},
        {6, reinterpret_cast<void*>(&Invoke)},
        {kPlayerGetPosition, reinterpret_cast<void*>(&GetPosition)},
        {kPlayerPutPosition, reinterpret_cast<void*>(&PutPosition)},
        {kPlayerGetDuration, reinterpret_cast<void*>(&GetDuration)},
        {kPlayerOpen, reinterpret_cast<void*>(&Open)},
        {kPlayerPlay, reinterpret_cast<void*>(&Play)},
        {kPlayerStop, reinterpret_cast<void*>(&Stop)},
    };
    for (const auto& entry : provided) methods[entry.position] = entry.method;
    for (const int setting : kPlayerSettings) {
      methods[setting] = reinterpret_cast<void*>(&PutSetting);
    }
  }
};

const Table methods_table;

}  // namespace

PlayerMethods::PlayerMethods(PlayerControl* owner) noexcept
    : table(methods_table.methods), control(owner) {}

HRESULT PlayerControl::Initialise() noexcept {
  events_.Reset(HeapNew<EventSource>(this));
  if (events_) player_ = PlayerEngine::Create(events_.get());
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
