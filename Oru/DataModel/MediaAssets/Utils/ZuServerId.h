#pragma once

#include "Oru/DataModel/MediaAssets/Export.h"

#include <stdexcept>
#include <string>

namespace Oru::DataModel::MediaAssets {

/// The identity of a server: its serial number, a multiple of 10 above 0, or 0 for no server.
///
/// The text is the serial number in decimal, without sign or leading zeros: "110". The URI is "zuserver://"
/// and that text. No server has the text "0", which doesn't read back: as with numbers, `Empty` alone gives
/// it.
///
/// The operations with numbers are compiled into each library that uses them, so that a program needn't link
/// this one for them.
class ORU_DATAMODEL_EXPORT ZuServerId {
 public:
  /// No server.
  ZuServerId() = default;
  /// @throws std::invalid_argument "Invalid server serial number N." unless `IsValid(number)`, so also for 0
  ORU_DATAMODEL_EXPORT ZuServerId(int number) { SerialNumber(number); }
  /// Reads what `ToString` writes for a server.
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
  ORU_DATAMODEL_EXPORT int SerialNumber() const { return serialNumber; }

  /// The serial number in decimal.
  std::string ToString() const;
  /// "zuserver://" and the serial number.
  std::string ToUri() const;

  /// On false, for "0" too, `server` stays as it was.
  static bool TryParse(const std::string& text, ZuServerId& server);
  /// Reads what `ToUri` writes for a server.
  /// @throws std::invalid_argument with the text in quotes if it is anything else
  static ZuServerId FromUri(const std::string& uri);

 private:
  ORU_DATAMODEL_EXPORT void SerialNumber(int number) {
    if (!IsValid(number)) {
      throw std::invalid_argument("Invalid server serial number " + std::to_string(number) + ".");
    }
    serialNumber = number;
  }
  void Parse(const std::string& text);

  int serialNumber = 0;
};

}  // namespace Oru::DataModel::MediaAssets
