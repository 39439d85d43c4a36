#include "Oru/Common/Databases/InvalidOperationException.h"

namespace Oru::Common::Databases {

InvalidOperationException::~InvalidOperationException() = default;

const char* InvalidOperationException::what() const noexcept {
  return "Invalid Operation Exception";
}

}  // namespace Oru::Common::Databases
