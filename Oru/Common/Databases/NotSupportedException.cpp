#include "Oru/Common/Databases/NotSupportedException.h"

namespace Oru::Common::Databases {

NotSupportedException::NotSupportedException(const char* description, const char* file, int32_t line) {
  msg.append(name).append(" : ").append(description);
  msg.append(" (in file ").append(file).append("at line ").append(std::to_string(line)).append(")");
}

NotSupportedException::~NotSupportedException() = default;

const char* NotSupportedException::what() const noexcept {
  return msg.c_str();
}

}  // namespace Oru::Common::Databases
