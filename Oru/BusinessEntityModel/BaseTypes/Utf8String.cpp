#include "Oru/BusinessEntityModel/BaseTypes/Utf8String.h"

#include <algorithm>

namespace Oru::BusinessEntityModel::BaseTypes {

namespace {

struct Sequence {
  std::size_t length;
  // The second byte is narrowed to keep out overlong forms, surrogates and what lies above U+10FFFF.
  uint8_t secondLow;
  uint8_t secondHigh;
};

Sequence SequenceOf(uint8_t lead) noexcept {
  if (lead >= 0xC2 && lead <= 0xDF) return {2, 0x80, 0xBF};
  if (lead == 0xE0) return {3, 0xA0, 0xBF};
  if (lead == 0xED) return {3, 0x80, 0x9F};
  if (lead >= 0xE1 && lead <= 0xEF) return {3, 0x80, 0xBF};
  if (lead == 0xF0) return {4, 0x90, 0xBF};
  if (lead >= 0xF1 && lead <= 0xF3) return {4, 0x80, 0xBF};
  if (lead == 0xF4) return {4, 0x80, 0x8F};
  return {1, 0, 0};
}

}  // namespace

std::size_t Utf8String::GetCharactersCount() const noexcept {
  std::size_t count = 0;
  for (std::size_t position = 0; position < size(); position += GetCharacterLength(position))
    ++count;
  return count;
}

std::vector<Utf8String> Utf8String::Characters() const {
  std::vector<Utf8String> characters;
  for (std::size_t position = 0; position < size();) {
    const std::size_t length = GetCharacterLength(position);
    characters.emplace_back(data() + position, length);
    position += length;
  }
  return characters;
}

bool Utf8String::IsAscii() const noexcept {
  return std::all_of(begin(), end(), [](char byte) { return static_cast<uint8_t>(byte) < 0x80; });
}

std::size_t Utf8String::GetCharacterLength(std::size_t position) const noexcept {
  if (position >= size()) return 0;
  const auto byteAt = [this](std::size_t index) { return static_cast<uint8_t>((*this)[index]); };
  const Sequence sequence = SequenceOf(byteAt(position));
  if (sequence.length == 1) return 1;
  if (sequence.length > size() - position) return 1;
  const uint8_t second = byteAt(position + 1);
  if (second < sequence.secondLow || second > sequence.secondHigh) return 1;
  for (std::size_t offset = 2; offset < sequence.length; ++offset) {
    if ((byteAt(position + offset) & 0xC0) != 0x80) return 1;
  }
  return sequence.length;
}

}  // namespace Oru::BusinessEntityModel::BaseTypes
