#include "effects/effects_processor.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "base/memory/heap.h"
#include "effects/stages.h"
#include "tests/effects/signals.h"
#include "tests/oracles/effects_model.h"
#include "tests/support/other_processor.h"
#include "tests/support/raw_slot.h"

namespace kelvo {
namespace {

// Called behind every Enter and before every Leave.
std::function<void(bool entered)> g_on_lock;
int g_entered;

}  // namespace

// In place of the system's lock: one that reports.
Lock::Lock() noexcept = default;
Lock::~Lock() = default;
void Lock::Enter() noexcept {
  ++g_entered;
  if (g_on_lock) g_on_lock(true);
}
void Lock::Leave() noexcept {
  if (g_on_lock) g_on_lock(false);
  --g_entered;
}

namespace test {
namespace {

// The object as a host calls it and an external library reads it, beside the reference.
class Effects : public ::testing::Test {
 protected:
  ~Effects() override { CallSlot<void>(object_, 0, 1u); }  // is it freed? leaks are found

  void SetBassMode(int32_t mode) {
    CallSlot<void>(object_, 1, mode);
    reference_.SetBassMode(mode);
  }
  void EnableEqualizer(int32_t enabled) {
    CallSlot<void>(object_, 3, enabled);
    reference_.enabled = enabled;
  }
  void SetEqualizer(int32_t preamp, const int32_t* sliders) {
    CallSlot<void>(object_, 4, preamp, sliders);
    reference_.SetEqualizer(preamp, sliders);
  }
  void CallBass(int16_t** samples, int32_t bytes) { CallSlot<void>(object_, 2, samples, bytes); }
  int32_t CallEqualizer(int16_t** samples, int32_t bytes) {
    return CallSlot<int32_t>(object_, 5, samples, bytes);
  }

  void ExpectFields() {
    ASSERT_EQ(DifferingOffset(Field(0), reference_), 0u);
    ASSERT_EQ(g_entered, 0);
  }

  // Behind the table of operations.
  const char* Field(size_t offset) const {
    return static_cast<const char*>(object_) + sizeof(void*) + offset;
  }

  void* object_ = static_cast<EffectsProcessor*>(HeapNew<FixedPointEffects>(g_other_processor));
  ReferenceEffects reference_;
};

TEST_F(Effects, NoSamplesAreAnEmptyBlock) {
  SetBassMode(1);
  int16_t* none = nullptr;
  EXPECT_EQ(CallEqualizer(&none, 8), 8);
  EXPECT_EQ(CallEqualizer(nullptr, 8), 8);
  CallBass(&none, 8);
  CallBass(nullptr, 8);
  ExpectFields();
}

// Of a 32-bit object, through raw memory; the other fields are the reference's.
TEST_F(Effects, WhereTheTablesAre) {
  const size_t wider = sizeof(void*) == 4 ? 0 : 4;  // pointers begin at a multiple of their size
  const int32_t* tables[2];
  memcpy(tables, Field(708 + wider), sizeof(tables));
  EXPECT_EQ(tables[0][0], 16289);
  EXPECT_EQ(tables[0][29], -13245);
  EXPECT_EQ(tables[1][0], 266882570);
  EXPECT_EQ(tables[1][3], 263966111);  // the second filter's, which external libraries use
  EXPECT_EQ(tables[1][4], 2234672);
  EXPECT_EQ(tables[1][5], 532245407);
  const char* flag = Field(708 + wider) + sizeof(tables);
  EXPECT_EQ(*reinterpret_cast<const int32_t*>(flag), 0);
  const void* rest[3];  // the library and its entries
  memcpy(rest, flag + sizeof(void*), sizeof(rest));
  for (const void* field : rest) EXPECT_EQ(field, nullptr);
}

TEST_F(Effects, AllWorkIsDoneUnderTheLock) {
  const int32_t sliders[kBands] = {1, 2, 3};
  std::vector<int16_t> block(AllSignals(100).back().samples), before;
  std::vector<char> at_enter, at_leave;
  int16_t* samples = block.data();
  g_on_lock = [&](bool entered) {
    (entered ? at_enter : at_leave).assign(Field(0), Field(sizeof(ReferenceEffects)));
    if (entered) before = block;
  };
  SetBassMode(2);
  EnableEqualizer(1);
  EXPECT_TRUE(at_enter.empty()) << "neither of them waits";
  const std::function<void()> kOperations[] = {[&] { SetEqualizer(3, sliders); },
                                               [&] { CallEqualizer(&samples, 400); },
                                               [&] { CallBass(&samples, 400); }};
  for (const auto& operation : kOperations) {
    const std::vector<char> fields(Field(0), Field(sizeof(ReferenceEffects)));
    const std::vector<int16_t> old = block;
    operation();
    EXPECT_EQ(at_enter, fields);
    EXPECT_EQ(before, old);
    EXPECT_NE(at_leave, fields);
    EXPECT_EQ(at_leave, std::vector<char>(Field(0), Field(sizeof(ReferenceEffects))));
    EXPECT_EQ(g_entered, 0);
  }
  g_on_lock = nullptr;
}

// The plain loop, which only other processors run, and this one's.
TEST(EqualizerLoops, EqualTheReference) {
  const int32_t sliders[][kBands] = {{0, 27, 14, 3, 20, 9, 27, 0, 13, 15},
                                     {27, 27, 27, 27, 27, 27, 27, 27, 27, 27},
                                     {0, INT32_MIN, -100, INT32_MAX, -1, 28, 5, 6, 7, 8},
                                     {INT32_MIN, INT32_MIN, INT32_MIN, INT32_MIN, INT32_MIN,
                                      INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX}};
  for (const BandsLoop loop : {&RunBandByBand, &RunBands}) {
    for (const Signal& signal : AllSignals(700)) {
      SCOPED_TRACE(signal.name);
      EffectsState state;
      ReferenceEffects reference;
      EqualizerPass pass;
      for (const auto& bands : sliders) {
        kelvo::SetEqualizer(state, 3, bands);
        reference.SetEqualizer(3, bands);
        auto got = signal.samples, want = got;
        RunEqualizer(state, pass, loop, got.data(), 700);
        reference.ProcessEqualizer(want.data(), 2800);
        ASSERT_EQ(got, want);
        ASSERT_EQ(DifferingOffset(&state, reference), 0u);
      }
    }
  }
}

}  // namespace
}  // namespace test
}  // namespace kelvo
