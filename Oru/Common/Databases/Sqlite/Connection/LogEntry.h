#pragma once

#include <cstdint>
#include <ostream>
#include <string>

namespace Oru::Common::Databases::Sqlite {

/// A message as its entry shows it: line ends become blanks.
std::string OneLine(std::string message);

/// Writes one entry as one line, as `2026-03-01T10:20:30.456Z Oru.Common.Database 0xC0090118 no such table:
/// Clip`: UTC time to the millisecond, source, code, message. The line is composed first and written in one
/// piece.
///
/// Threads: may be called from several threads at once, also for one stream.
void WriteLogEntry(std::ostream& stream, const std::string& source, int32_t code, const std::string& message);

}  // namespace Oru::Common::Databases::Sqlite
