#include "Oru/DataModel/MediaAssets/Annotation.h"

namespace Oru::DataModel::MediaAssets {

Annotation::Annotation() = default;
Annotation::Annotation(AnnotationType kind) : type(kind) {}
Annotation::Annotation(AnnotationType kind, BaseTypes::Utf8String text) : type(kind), data(std::move(text)) {}
Annotation::Annotation(const Annotation&) = default;
Annotation::Annotation(Annotation&&) noexcept = default;
Annotation& Annotation::operator=(const Annotation&) = default;
Annotation& Annotation::operator=(Annotation&&) noexcept = default;
Annotation::~Annotation() = default;

std::unique_ptr<Annotation> Annotation::Clone() const {
  return std::make_unique<Annotation>(*this);
}

bool Annotation::operator==(const Annotation& other) const {
  return type == other.type && data == other.data && timeBounds == other.timeBounds &&
         *metadata == *other.metadata;
}

}  // namespace Oru::DataModel::MediaAssets
