#pragma once

#include <string>

namespace Oru::TimePoints {

/// What the formatters of all time values share.
template <class T>
class ValueFormatter {
 public:
  /// The text of the value.
  virtual std::string Format(const T& value) const = 0;

  virtual ~ValueFormatter() = default;
};

}  // namespace Oru::TimePoints
