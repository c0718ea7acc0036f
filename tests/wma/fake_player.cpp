#include "tests/wma/fake_player.h"

#include <gtest/gtest.h>

#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

FakePlayer* g_player = nullptr;

// The method table, called as player_control.h calls it.
HRESULT STDMETHODCALLTYPE Query(void* self, REFIID iid, void** out);
ULONG STDMETHODCALLTYPE Count(void*) {
  return 1;  // static
}

template <int kNumber>
HRESULT STDMETHODCALLTYPE Put(void*, int32_t value) {
  g_player->log += std::to_string(kNumber) + "=" + std::to_string(value) + " ";
  return g_player->refused_setting == kNumber ? E_FAIL : S_OK;
}

HRESULT STDMETHODCALLTYPE GetSeconds(void*, double* seconds) {
  *seconds = g_player->seconds;
  return g_player->result;
}

HRESULT STDMETHODCALLTYPE PutPosition(void*, double seconds) {
  char text[40];
  snprintf(text, sizeof(text), "seek %.3f ", seconds);
  g_player->log += text;
  return g_player->result;
}

HRESULT STDMETHODCALLTYPE Open(void*, BSTR file) {
  g_player->log += "open " + test::Utf8(file) + " ";
  return g_player->result;
}

template <char kCommand>
HRESULT STDMETHODCALLTYPE Log(void*) {
  g_player->log += kCommand == 'p' ? "play " : "stop ";
  return g_player->result;
}

template <int... kNumbers>
void AddSettings(void** methods) {
  ((methods[kNumbers] = reinterpret_cast<void*>(&Put<kNumbers>)), ...);
}

struct Table {
  void* methods[kPlayerStop + 1] = {};
  Table() {
    AddSettings<24, 26, 28, 30, 32, 34, 36, 38, 96>(methods);
    methods[0] = reinterpret_cast<void*>(&Query);
    methods[1] = methods[2] = reinterpret_cast<void*>(&Count);
    methods[59] = methods[63] = reinterpret_cast<void*>(&GetSeconds);
    methods[60] = reinterpret_cast<void*>(&PutPosition);
    methods[119] = reinterpret_cast<void*>(&Open);
    methods[121] = reinterpret_cast<void*>(&Log<'p'>);
    methods[123] = reinterpret_cast<void*>(&Log<'s'>);
  }
};
Table g_table;
// What an interface pointer points to: the address of the table.
void* g_control = g_table.methods;

// Static objects: references do not matter.
template <class Interface>
class Static : public Interface {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    return Query(this, iid, out);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
};

class Point final : public Static<IConnectionPoint> {
 public:
  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer**) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override {
    if (g_player->fault == Fault::kRefusesSinks) return E_FAIL;
    g_player->sink = ComPtr<IUnknown>::Share(sink);
    *cookie = 77;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
    g_player->log += "unadvise " + std::to_string(cookie) + " ";
    g_player->sink.Reset();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }
} g_point;

class Container final : public Static<IConnectionPointContainer> {
 public:
  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints**) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** out) override {
    *out = iid == kPlayerEventInterface ? &g_point : nullptr;
    return *out ? S_OK : E_NOINTERFACE;
  }
} g_container;

class Factory final : public Static<IClassFactory> {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** out) override {
    *out = this;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** out) override {
    return g_player->fault == Fault::kNotMade ? E_OUTOFMEMORY : Query(nullptr, iid, out);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
} g_factory;

HRESULT STDMETHODCALLTYPE Query(void*, REFIID iid, void** out) {
  *out = nullptr;
  if (iid == IID_IUnknown) *out = &g_container;
  if (iid == kPlayerInterface && g_player->fault != Fault::kNoPlayer) *out = &g_control;
  if (iid == IID_IConnectionPointContainer && g_player->fault != Fault::kNoEvents)
    *out = &g_container;
  return *out ? S_OK : E_NOINTERFACE;
}

}  // namespace

FakePlayer::FakePlayer() {
  g_player = this;
  wchar_t program[MAX_PATH];
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  SetEnvironmentVariableW(L"KELVO_PLAYER", program);
}

FakePlayer::~FakePlayer() {
  SetEnvironmentVariableW(L"KELVO_PLAYER", nullptr);
  g_player = nullptr;
}

void* FakePlayer::control() {
  return &g_control;
}

void* FakePlayer::connection_point() {
  return &g_point;
}

HRESULT FakePlayer::Fire(DISPID event, DISPPARAMS* parameters) {
  ComPtr<IDispatch> events;
  EXPECT_EQ(events.Query(sink.get(), kPlayerEventInterface), S_OK);
  return events->Invoke(event, IID_NULL, 0, DISPATCH_METHOD, parameters, nullptr, nullptr, nullptr);
}

}  // namespace kelvo

extern "C" __declspec(dllexport) HRESULT STDAPICALLTYPE
    DllGetClassObject(REFCLSID id, REFIID, void** out) {
  *out = id == kelvo::kPlayerClass ? &kelvo::g_factory : nullptr;
  return *out ? S_OK : CLASS_E_CLASSNOTAVAILABLE;
}
