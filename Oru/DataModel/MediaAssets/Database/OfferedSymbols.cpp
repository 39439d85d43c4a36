#include "Oru/DataModel/MediaAssets/Utils/ZuServerId.h"
#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"
#include "Oru/TimePoints/Core/TimeCode.h"

// A compiler that inlines an operation of a header makes no code of it. Some of them this library
// offers compiled, for programs that look for them in it: taking their addresses here makes a compiler keep
// them. An explicit instantiation may name a private operation.

namespace Oru {
namespace {

using DataModel::MediaAssets::ZuServerId;
using TimePoints::TimeCode;
using TimePoints::TimeCodeBuilder;

template <auto Operation>
class KeptSymbol {
  [[gnu::used]] static inline const auto address = Operation;
};

template class KeptSymbol<&TimeCode::AddSample>;
template class KeptSymbol<&TimeCode::DateTimeToSample>;
template class KeptSymbol<&TimeCodeBuilder::Build>;
template class KeptSymbol<static_cast<int (ZuServerId::*)() const>(&ZuServerId::SerialNumber)>;
template class KeptSymbol<static_cast<void (ZuServerId::*)(int)>(&ZuServerId::SerialNumber)>;

}  // namespace
}  // namespace Oru
