#pragma once

#include "Oru/DataModel/MediaAssets/Export.h"

#include <string>

namespace Oru::DataModel::MediaAssets {

/// The identity of a server: its serial number, a multiple of 10 above 0, or 0 for no server.
///
/// The text is the serial number in decimal, without sign or leading zeros: "110", and "0" for no server. The
/// URI is "zuserver://" and that text.
///
/// Threads: a value belongs to one thread at a time; distinct values are independent.
class ORU_DATAMODEL_EXPORT ZuServerId {
 public:
  /// No server.
  ZuServerId() = default;
  /// @throws std::invalid_argument "Invalid server serial number N." unless `IsValid(number)`, so also for 0
  explicit ZuServerId(int number);
  /// Reads what `ToString` writes.
  /// @throws std::invalid_argument with the text in quotes if it is anything else
  explicit ZuServerId(const std::string& text);

  /// No server; one shared instance.
  static const ZuServerId& Empty();

  /// Whether the number names a server: above 0 and a multiple of 10.
  static bool IsValid(int number) { return number > 0 && number % 10 == 0; }

  /// The same serial number.
  bool operator==(const ZuServerId& other) const { return serialNumber == other.serialNumber; }
  bool operator!=(const ZuServerId& other) const { return !(*this == other); }

  /// A multiple of 10 above 0; 0 for no server.
  int SerialNumber() const;

  /// The serial number in decimal.
  std::string ToString() const;
  /// "zuserver://" and the serial number.
  std::string ToUri() const;

  /// On false `server` stays as it was.
  static bool TryParse(const std::string& text, ZuServerId& server);
  /// Reads what `ToUri` writes.
  /// @throws std::invalid_argument with the text in quotes if it is anything else
  static ZuServerId FromUri(const std::string& uri);

 private:
  void SerialNumber(int number);
  void Parse(const std::string& text);

  int serialNumber = 0;
};

}  // namespace Oru::DataModel::MediaAssets
