#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"
#include "Oru/TimePoints/Core/TimeCode.h"

// The values of time are header-only, and a compiler that inlines an operation leaves no code of it behind.
// Three of them this library offers compiled, for programs that look for them in it: taking their addresses
// here makes a compiler keep them. An explicit instantiation may name a private operation.

namespace Oru::TimePoints {
namespace {

template <auto Operation>
class KeptSymbol {
  [[gnu::used]] static inline const auto address = Operation;
};

template class KeptSymbol<&TimeCode::AddSample>;
template class KeptSymbol<&TimeCode::DateTimeToSample>;
template class KeptSymbol<&TimeCodeBuilder::Build>;

}  // namespace
}  // namespace Oru::TimePoints
