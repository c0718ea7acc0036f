#include "cycle_model.h"

#include <algorithm>

namespace bench {
namespace {

constexpr uint32_t kPc = 15;

uint32_t Field(uint32_t word, int low) {
  return word >> low & 15;
}

uint32_t Bit(uint32_t word, int number) {
  return word >> number & 1;
}

uint32_t Mask(uint32_t word, int low) {
  return 1u << Field(word, low);
}

void DecodeMultiply(uint32_t word, Instruction* i) {
  const bool is_long = Bit(word, 23), accumulates = Bit(word, 21);
  i->kind = is_long ? Instruction::kLongMultiply : Instruction::kMultiply;
  i->issue = is_long ? 2 : 1;
  i->multiplier = static_cast<uint8_t>(Field(word, 8));
  i->reads = Mask(word, 0) | Mask(word, 8);
  i->writes = Mask(word, 16) | (is_long ? Mask(word, 12) : 0);
  if (accumulates) i->reads |= is_long ? i->writes : Mask(word, 12);
}

void DecodeTransfer(uint32_t word, bool register_offset, bool sign_extends, Instruction* i) {
  i->reads = Mask(word, 16) | (register_offset ? Mask(word, 0) : 0);
  if (Bit(word, 20)) {
    i->kind = Instruction::kLoad;
    i->delay = sign_extends ? 2 : 1;
    i->writes = Mask(word, 12);
  } else {
    i->reads |= Mask(word, 12);
  }
}

// The last register comes a cycle later; the others are there.
void DecodeBlockTransfer(uint32_t word, Instruction* i) {
  const uint32_t list = word & 0xFFFF;
  i->issue = static_cast<uint8_t>(std::max(2, __builtin_popcount(list)));
  i->reads = Mask(word, 16);
  if (Bit(word, 20)) {
    i->kind = Instruction::kLoad;
    i->delay = 1;
    if (list != 0) i->writes = 1u << (31 - __builtin_clz(list));
  } else {
    i->reads |= list;
  }
}

void DecodeDataProcessing(uint32_t word, Instruction* i) {
  const uint32_t operation = Field(word, 21);
  const bool moves = operation == 13 || operation == 15, compares = operation >> 2 == 2;
  if (!moves) i->reads |= Mask(word, 16);
  if (!Bit(word, 25)) {
    i->reads |= Mask(word, 0);
    if (Bit(word, 4)) i->reads |= Mask(word, 8);
  }
  if (!compares) i->writes = Mask(word, 12);
}

}  // namespace

Instruction Decode(uint32_t word) {
  Instruction i;
  i.condition = static_cast<uint8_t>(word >> 28);
  const bool extended = (word & 0x0E000090) == 0x00000090;  // multiplications, short transfers
  switch (word >> 25 & 7) {
    case 0:
    case 1:
      if (extended && (word & 0x60) != 0) {
        DecodeTransfer(word, !Bit(word, 22), Bit(word, 6), &i);
      } else if (extended && !Bit(word, 24)) {
        DecodeMultiply(word, &i);
      } else {
        DecodeDataProcessing(word, &i);
      }
      break;
    case 2:
    case 3:
      DecodeTransfer(word, Bit(word, 25), false, &i);
      break;
    case 4:
      DecodeBlockTransfer(word, &i);
      break;
    case 5:
      i.kind = Instruction::kBranch;
      if (Bit(word, 24)) i.writes = 1u << 14;
      break;
    default:
      break;
  }
  return i;
}

bool Holds(uint8_t condition, uint32_t cpsr) {
  const bool n = cpsr >> 31, z = cpsr >> 30 & 1, c = cpsr >> 29 & 1, v = cpsr >> 28 & 1;
  const bool holds[] = {z, c, n, v, c && !z, n == v, !z && n == v, true};
  return holds[condition >> 1] != (condition & 1) || condition >= 14;
}

}  // namespace bench
