#include "Oru/Common/Databases/Sqlite/Connection/LogEntry.h"

#include <chrono>
#include <cstdio>
#include <ctime>
#include <mutex>

namespace Oru::Common::Databases::Sqlite {

namespace {

std::string Now() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
  const auto seconds = static_cast<std::time_t>(milliseconds / 1000);
  std::tm utc{};
  gmtime_r(&seconds, &utc);
  char text[64];
  const std::size_t length = std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &utc);
  std::snprintf(text + length, sizeof text - length, ".%03dZ", static_cast<int>(milliseconds % 1000));
  return text;
}

}  // namespace

std::string OneLine(std::string message) {
  for (char& c : message) {
    if (c == '\n' || c == '\r') c = ' ';
  }
  return message;
}

void WriteLogEntry(std::ostream& stream, const std::string& source, int32_t code,
                   const std::string& message) {
  char codeText[16];
  std::snprintf(codeText, sizeof codeText, "0x%08X", static_cast<unsigned int>(code));
  const std::string entry = OneLine(Now() + " " + source + " " + codeText + " " + message) + '\n';

  static std::mutex mutex;
  const std::lock_guard<std::mutex> lock(mutex);
  try {
    stream.write(entry.data(), static_cast<std::streamsize>(entry.size())).flush();
  } catch (...) {
    // A log that can't be written must not fail what is being logged, whatever its buffer throws.
  }
}

}  // namespace Oru::Common::Databases::Sqlite
