#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"

#include <array>
#include <cstdint>
#include <random>
#include <utility>

namespace Oru::BusinessEntityModel::BaseTypes {

const Identifier& Identifier::Empty() {
  static const Identifier empty;
  return empty;
}

Identifier Identifier::Generate() {
  // Drawn from the system for each identifier: a generator of our own would give a forked process its
  // parent's sequence.
  thread_local std::random_device source;
  std::array<uint32_t, 4> words{};
  for (uint32_t& word : words)
    word = source();
  words[1] = (words[1] & 0xFFFF0FFFU) | 0x00004000U;  // version 4
  words[2] = (words[2] & 0x3FFFFFFFU) | 0x80000000U;  // variant of RFC 4122

  std::string text;
  text.reserve(36);
  for (int digit = 0; digit < 32; ++digit) {
    if (digit == 8 || digit == 12 || digit == 16 || digit == 20) text += '-';
    const uint32_t word = words[static_cast<std::size_t>(digit / 8)];
    text += "0123456789abcdef"[(word >> (28 - 4 * (digit % 8))) & 0xFU];
  }
  return Identifier(std::move(text));
}

}  // namespace Oru::BusinessEntityModel::BaseTypes
