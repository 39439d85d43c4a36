#pragma once

#include <ostream>
#include <string>

namespace Oru::Benchmarks {

/// Writes a JSON array of what a user waits for in milliseconds on a file of many clips, each beside its
/// ceiling: openings, the first deletion of a connection, the first page of a list and its total; and a read
/// all over the file by the page cache and the mapped part of the file.
/// @param folder  where the file is made, and removed again
void MeasureWaits(const std::string& folder, int clipCount, std::ostream& out);

/// Writes a JSON array of how long 1, 2 and 4 threads take for the same number of deep reads, each thread with
/// a database of its own.
/// @param isTuned  whether `TuneForThreads` is called first. It must then be the first that the program does
void MeasureThreads(const std::string& folder, bool isTuned, std::ostream& out);

}  // namespace Oru::Benchmarks
