#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace Oru::Benchmarks {

class LibrarySite;

/// Saves sample clips, a thousand a transaction.
/// @param count  the number of the first; afterwards `size`
void FillUpTo(LibrarySite& site, int& count, int size);

/// Fills a new file and writes a JSON array of what a clip costs at each of the sizes, in microseconds of
/// computing time: to find its key, to save a new one among a hundred, to read one deep.
/// @param folder   where the file is made, and removed again
/// @param sizes    numbers of clips, ascending
/// @param largest  the largest size that is measured without the look-up indexes too
void MeasureGrowth(const std::string& folder, const std::vector<int>& sizes, int largest, std::ostream& out);

/// Writes a JSON array of what a clip costs on a file by the options of its connection, in microseconds of
/// elapsed time: saved in a transaction of its own and in one of a hundred clips, read deep with a read guard
/// and without.
void MeasureConnections(const std::string& folder, std::ostream& out);

}  // namespace Oru::Benchmarks
