#include <gtest/gtest.h>

#include "base/windows/player_control.h"
#include "input/wma/control_host.h"
#include "tests/support/end_messages.h"

namespace kelvo {
namespace {

HRESULT Fire(EventSink& sink, DISPID event, DISPPARAMS* parameters) {
  return sink.Invoke(event, IID_NULL, 0, DISPATCH_METHOD, parameters, nullptr, nullptr, nullptr);
}

TEST(EventSinkTest, AnswersEveryEvent) {
  test::EndMessages messages;
  const SharedPointer<WindowHandle> owner(messages.window());
  EventSink sink(owner);
  VARIANT values[2] = {};
  DISPPARAMS none = {};
  DISPPARAMS two = {values, nullptr, 2, 0};
  for (DISPPARAMS* parameters : {&none, &two}) {
    for (DISPID event = -1; event <= 255; ++event) {
      const bool is_end = event == 4 || event == 6 || event == 7 || event == 21;
      EXPECT_EQ(Fire(sink, event, parameters),
                is_end || event == 17 ? S_OK : static_cast<HRESULT>(0x80020003))
          << event;
      EXPECT_EQ(messages.count(), is_end ? 1 : 0) << event;
      messages.Clear();
    }
  }
}

TEST(EventSinkTest, RefusesMissingAndNamedParameters) {
  test::EndMessages messages;
  const SharedPointer<WindowHandle> owner(messages.window());
  EventSink sink(owner);
  DISPID name = 0;
  VARIANT value = {};
  DISPPARAMS named = {&value, &name, 1, 1};
  for (DISPID event = 0; event <= 255; ++event) {
    EXPECT_EQ(Fire(sink, event, nullptr), static_cast<HRESULT>(0x80004003)) << event;
    EXPECT_EQ(Fire(sink, event, &named), static_cast<HRESULT>(0x80020007)) << event;
  }
  EXPECT_EQ(messages.count(), 0);
}

TEST(EventSinkTest, NeedsNoOwner) {
  const SharedPointer<WindowHandle> nobody;
  EventSink sink(nobody);
  DISPPARAMS none = {};
  EXPECT_EQ(Fire(sink, 4, &none), S_OK);
}

TEST(EventSinkTest, HandsOutWhatItIs) {
  const struct {
    const char* name;
    const IID* iid;
    bool known;
  } kCases[] = {
      {"IUnknown", &IID_IUnknown, true},
      {"IDispatch", &IID_IDispatch, true},
      {"the control's events", &kPlayerEventInterface, true},
      {"the control", &kPlayerInterface, false},
      {"class factory", &IID_IClassFactory, false},
  };
  const SharedPointer<WindowHandle> nobody;
  EventSink sink(nobody);
  for (const auto& c : kCases) {
    void* out = &sink;
    EXPECT_EQ(sink.QueryInterface(*c.iid, &out), c.known ? S_OK : E_NOINTERFACE) << c.name;
    EXPECT_EQ(out, c.known ? static_cast<IDispatch*>(&sink) : nullptr) << c.name;
  }
  EXPECT_EQ(sink.QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

}  // namespace
}  // namespace kelvo
