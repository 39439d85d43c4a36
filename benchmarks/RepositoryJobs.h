#pragma once

#include <ostream>
#include <string>

namespace Oru::Benchmarks {

/// Measures what `MediaAssetRepository` costs: puts beside saves through the tables, and pages of a file of
/// many clips beside SQL written by hand. Writes a JSON array.
/// @param folder     where the file is made, and removed again
/// @param clipCount  how many clips it holds
void MeasureRepository(const std::string& folder, int clipCount, std::ostream& out);

}  // namespace Oru::Benchmarks
