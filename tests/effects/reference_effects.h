// Both stages written down sample by sample, slow and obvious, with rings for the histories.
#pragma once

#include <cstdint>
#include <vector>

namespace kelvo::test {

inline int16_t Clamp(int64_t value) {
  return static_cast<int16_t>(value < -32768 ? -32768 : value > 32767 ? 32767 : value);
}

struct RingPositions {
  int now = 0, one_back = 2, two_back = 1;
  void Advance() {
    for (int* p : {&now, &one_back, &two_back}) *p = *p == 2 ? 0 : *p + 1;
  }
};

class ReferenceEqualizer {
 public:
  int64_t gains[10] = {};
  int preamp_index = 14;

  void Process(std::vector<int16_t>* samples) {
    static const int32_t kTable[10][3] = {
        {16289, 47, 32672},  {16111, 136, 32485},  {15885, 249, 32238}, {15427, 478, 31695},
        {14819, 782, 30887}, {12114, 2134, 25934}, {8961, 3711, 16635}, {5082, 5650, -2972},
        {4377, 6003, -8538}, {3965, 6209, -13245},
    };
    for (size_t i = 0; i < samples->size(); i += 2) {
      for (int c = 0; c < 2; ++c) {
        int32_t s = (*samples)[i + c];
        if (preamp_index != 14) s = ((preamp_index + 2) * s) >> 4;
        int64_t sum = 0;
        for (int k = 0; k < 10; ++k) {
          Ring& x = in_[k][c];
          Ring& y = out_[k][c];
          const int64_t exact = int64_t{kTable[k][1]} * (s - x.v[at_.two_back]) -
                                int64_t{kTable[k][0]} * y.v[at_.two_back] +
                                int64_t{kTable[k][2]} * y.v[at_.one_back];
          x.v[at_.now] = s;
          y.v[at_.now] = static_cast<int32_t>(exact) >> 14;
          sum += y.v[at_.now] * gains[k];
        }
        (*samples)[i + c] = Clamp((sum >> 12) + (s >> 2) + 12500);
      }
      at_.Advance();
    }
  }

 private:
  struct Ring {
    int32_t v[3] = {};
  };
  Ring in_[10][2], out_[10][2];
  RingPositions at_;
};

class ReferenceBass {
 public:
  int64_t gain = 0;

  void Process(std::vector<int16_t>* samples) {
    for (size_t i = 0; i < samples->size(); i += 2) {
      for (int c = 0; c < 2; ++c) {
        const int32_t x = (*samples)[i + c] * 2048;
        const int32_t v = Stage(x, &rings_[c][0], &rings_[c][1]);
        const int32_t w = Stage(v, &rings_[c][2], &rings_[c][3]);
        (*samples)[i + c] = Clamp((int64_t{w} + v + x) >> 12);
      }
      at_.Advance();
    }
  }

 private:
  struct Ring {
    int64_t v[3] = {};
  };
  int32_t Stage(int32_t x, Ring* in, Ring* out) {
    const int64_t u = (776442 * (x - in->v[at_.two_back]) - 266882570 * out->v[at_.two_back] +
                       535298466 * out->v[at_.one_back]) >>
                      28;
    in->v[at_.now] = x;
    out->v[at_.now] = static_cast<int32_t>(u);
    return static_cast<int32_t>((out->v[at_.now] * gain) >> 28);
  }
  Ring rings_[2][4];
  RingPositions at_;
};

}  // namespace kelvo::test
