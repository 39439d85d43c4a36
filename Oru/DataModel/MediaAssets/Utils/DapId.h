#pragma once

#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Utils/ZuServerId.h"

#include <cstdint>
#include <string>

namespace Oru::DataModel::MediaAssets {

/// The place of a clip on the clip grid of a server: page, bank, row, and the letter of a camera if it has
/// one. "Clip" is another word for the row.
///
/// On the grid a page and a row go from 0 to 9, a bank from 1 to 9 and a camera from 'A' to 'L'. An id also
/// holds what is off the grid, as files can: any number from 0 to 255, of which 255 (`Unset`) means not set,
/// and any camera, of which 0 means none. `IsValid` distinguishes the two.
///
/// Texts. Page, bank and row follow one another, each as its digit, as "-" when it isn't set, or as
/// its number in parentheses above 9; then the camera, as its letter 'A' to 'Z', as nothing for none, or as
/// the number of its byte in parentheses. The server comes first, before a stroke.
///
///     page 1, bank 1, row 1, camera A, server 110   "111A"       "110/111A"     "dap://110/1/1/1/A"
///     page 0, bank 9, row 3, no camera, no server   "093"        "0/093"        "dap://0/0/9/3"
///     nothing set                                   "---"        "0/---"        "dap://0/-/-/-"
///     page 12, bank 1, row not set, camera '!'      "(12)1-(33)" "0/(12)1-(33)" "dap://0/12/1/-/33"
///
/// The parsers are strict: each id has one text of each form, and nothing else is read.
class ORU_DATAMODEL_EXPORT DapId {
 public:
  /// The bounds of the grid, both included:
  static constexpr int MaxChannel = 12;
  static constexpr char MinCamera = 'A';
  static constexpr char MaxCamera = 'L';
  static constexpr int8_t MinPage = 0;
  static constexpr int8_t MaxPage = 9;
  static constexpr int8_t MinBank = 1;
  static constexpr int8_t MaxBank = 9;
  static constexpr int8_t MinRow = 0;
  static constexpr int8_t MaxRow = 9;
  /// The page, bank or row that isn't set.
  static constexpr int Unset = 255;

  /// Nothing set; one shared instance.
  static const DapId& Empty();

  /// Nothing set.
  DapId() = default;

  // The constructors from numbers throw `std::invalid_argument` for a page, bank or row outside 0 to 255 and
  // for a position outside 0 to 999. They do not ask that the id be on the grid.

  /// At `Position()`: 111 is page 1, bank 1, row 1.
  explicit DapId(int position);
  DapId(int position, char cameraLetter);
  /// A second number would be taken for a camera: name the server as a `ZuServerId`.
  DapId(int, int) = delete;
  DapId(int pageNumber, int bankNumber, int rowNumber);
  DapId(int pageNumber, int bankNumber, int rowNumber, char cameraLetter);
  DapId(const ZuServerId& server, int position);
  DapId(const ZuServerId& server, int position, char cameraLetter);
  DapId(const ZuServerId& server, int pageNumber, int bankNumber, int rowNumber);
  DapId(const ZuServerId& server, int pageNumber, int bankNumber, int rowNumber, char cameraLetter);
  /// Reads what `TryParse` reads.
  /// @throws std::invalid_argument with the text in quotes if it is anything else
  explicit DapId(const std::string& text);

  /// The same server, page, bank, row and camera.
  bool operator==(const DapId& other) const;
  bool operator!=(const DapId& other) const { return !(*this == other); }

  /// Whether nothing is set, not even the server.
  bool IsEmpty() const { return *this == Empty(); }

  /// Whether the value lies between the two, both included.
  static bool IsInRange(int value, int8_t min, int8_t max) { return value >= min && value <= max; }
  /// Whether the value is on the grid:
  static bool IsValidPage(int page) { return IsInRange(page, MinPage, MaxPage); }
  static bool IsValidBank(int bank) { return IsInRange(bank, MinBank, MaxBank); }
  static bool IsValidRow(int row) { return IsInRange(row, MinRow, MaxRow); }
  static bool IsValidCamera(char camera) { return camera >= MinCamera && camera <= MaxCamera; }

  /// Whether the id is on the grid: a page, a bank and a row in range, and no camera or a valid one. The
  /// server plays no part.
  bool IsValid() const;

  /// The server; an empty one for none.
  const ZuServerId& ServerId() const { return serverId; }
  /// From 0 to 255, `Unset` where not set:
  int Page() const { return page; }
  int Bank() const { return bank; }
  int Clip() const { return row; }
  int Row() const { return row; }
  /// The letter, 0 for none.
  char Camera() const { return camera; }
  /// Whether there is a camera, valid or not.
  bool HasCamera() const { return camera != 0; }

  /// The number of the camera's channel: 1 for 'A' to `MaxChannel` for 'L'; 0 for any other camera and for
  /// none.
  int Channel() const;

  /// Page, bank and row as the digits of one number, 0 to 999: page 1, bank 2, row 3 give 123. -1 if one of
  /// the three is above 9.
  int Position() const;

  /// The place among the 900 of the grid, counted from 0 by row, then bank, then page: page 0, bank 1, row 0
  /// give 0, page 9, bank 9, row 9 give 899. -1 off the grid.
  int Index() const;

  /// The clip without its server, as "111A".
  std::string ToShortString() const;
  /// The clip with its server, as "110/111A".
  std::string ToString() const;
  /// As "dap://110/1/1/1/A"; without a camera its part is left out.
  std::string ToUri() const;

  /// Reads the longest text of an id, of the form with a server or else of the short one (an id without
  /// server), at the beginning of `text`; `consumed` becomes its length. On false `id` stays as it was and
  /// `consumed` is 0.
  static bool TryParse(const std::string& text, DapId& id, int& consumed);
  /// The same, if the id is all of `text`. On false `id` stays as it was.
  static bool TryParse(const std::string& text, DapId& id);
  /// Reads what `ToUri` writes.
  /// @throws std::invalid_argument with the text in quotes if it is anything else
  static DapId FromUri(const std::string& uri);

 private:
  void Page(int value);
  void Bank(int value);
  void Row(int value);
  void Camera(char value);
  void Position(int value);
  void set(int pageNumber, int bankNumber, int rowNumber, char cameraLetter);

  ZuServerId serverId;
  uint8_t page = Unset;
  uint8_t bank = Unset;
  uint8_t row = Unset;
  char camera = 0;
};

}  // namespace Oru::DataModel::MediaAssets
