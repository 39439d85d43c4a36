#pragma once

#include "support/Prelude.h"

namespace Oru::TestSupport {

/// A number that differs for every other text, in place of a copy of the text.
inline uint64_t StoredHash(const std::string& text) {
  uint64_t hash = 14695981039346656037U;
  for (const char c : text)
    hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
  return hash;
}

}  // namespace Oru::TestSupport
