#include "Oru/Common/Databases/ObjectClosedException.h"

namespace Oru::Common::Databases {

ObjectClosedException::~ObjectClosedException() = default;

const char* ObjectClosedException::what() const noexcept {
  return "Object closed excpetion";
}

}  // namespace Oru::Common::Databases
