#include "Oru/Common/Databases/ArgumentException.h"

namespace Oru::Common::Databases {

ArgumentException::~ArgumentException() = default;

const char* ArgumentException::what() const noexcept {
  return "Wrong arguement exception";
}

}  // namespace Oru::Common::Databases
