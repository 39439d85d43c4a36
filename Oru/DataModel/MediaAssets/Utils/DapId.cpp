#include "Oru/DataModel/MediaAssets/Utils/DapId.h"

#include "Oru/DataModel/MediaAssets/Utils/TextScanner.h"

#include <array>
#include <optional>
#include <stdexcept>
#include <string_view>

namespace Oru::DataModel::MediaAssets {

namespace {

constexpr int maxDigit = 9;
constexpr int maxPosition = 999;
constexpr int maxByte = 255;
constexpr char noCamera = 0;
constexpr std::string_view uriScheme = "dap://";

uint8_t CheckedByte(const char* part, int value) {
  if (value < 0 || value > maxByte) {
    throw std::invalid_argument(std::string(part) + " " + std::to_string(value) +
                                " of a clip must be between 0 and 255.");
  }
  return static_cast<uint8_t>(value);
}

bool IsLetter(char camera) {
  return camera >= 'A' && camera <= 'Z';
}

int ByteOf(char camera) {
  return static_cast<unsigned char>(camera);
}

std::string InParentheses(int number) {
  return "(" + std::to_string(number) + ")";
}

std::string PartText(int part) {
  if (part == DapId::Unset) return "-";
  return part <= maxDigit ? std::to_string(part) : InParentheses(part);
}

std::string CameraText(char camera) {
  if (camera == noCamera) return "";
  return IsLetter(camera) ? std::string(1, camera) : InParentheses(ByteOf(camera));
}

std::string PartOfUri(int part) {
  return part == DapId::Unset ? "-" : std::to_string(part);
}

std::string CameraOfUri(char camera) {
  return IsLetter(camera) ? std::string(1, camera) : std::to_string(ByteOf(camera));
}

std::optional<int> ReadInParentheses(TextScanner& scanner, int min, int max) {
  TextScanner ahead = scanner;
  if (!ahead.Accept("(")) return std::nullopt;
  const auto number = ahead.Number(min, max);
  if (!number || !ahead.Accept(")")) return std::nullopt;
  scanner = ahead;
  return number;
}

std::optional<int> ReadPart(TextScanner& scanner) {
  if (scanner.Accept("-")) return DapId::Unset;
  if (const auto digit = scanner.CharacterBetween('0', '9')) return *digit - '0';
  return ReadInParentheses(scanner, maxDigit + 1, DapId::Unset - 1);
}

std::optional<int> ReadPartOfUri(TextScanner& scanner) {
  if (!scanner.Accept("/")) return std::nullopt;
  if (scanner.Accept("-")) return DapId::Unset;
  return scanner.Number(0, DapId::Unset - 1);
}

/// The camera of a byte that was written as a number: letters are not.
std::optional<char> CameraOfByte(std::optional<int> number) {
  if (!number || IsLetter(static_cast<char>(*number))) return std::nullopt;
  return static_cast<char>(*number);
}

char ReadCamera(TextScanner& scanner) {
  if (const auto letter = scanner.CharacterBetween('A', 'Z')) return *letter;
  TextScanner ahead = scanner;
  const auto camera = CameraOfByte(ReadInParentheses(ahead, 1, maxByte));
  if (!camera) return noCamera;
  scanner = ahead;
  return *camera;
}

std::optional<char> ReadCameraOfUri(TextScanner& scanner) {
  if (scanner.IsAtEnd()) return noCamera;
  if (!scanner.Accept("/")) return std::nullopt;
  if (const auto letter = scanner.CharacterBetween('A', 'Z')) return letter;
  return CameraOfByte(scanner.Number(1, maxByte));
}

template <class Reader>
std::optional<std::array<int, 3>> ReadPageBankRow(TextScanner& scanner, Reader readPart) {
  std::array<int, 3> parts{};
  for (int& part : parts) {
    const std::optional<int> read = readPart(scanner);
    if (!read) return std::nullopt;
    part = *read;
  }
  return parts;
}

std::optional<DapId> ReadClip(const ZuServerId& server, TextScanner& scanner) {
  const auto parts = ReadPageBankRow(scanner, ReadPart);
  if (!parts) return std::nullopt;
  const auto [page, bank, row] = *parts;
  return DapId(server, page, bank, row, ReadCamera(scanner));
}

std::optional<ZuServerId> ReadServer(const std::string& text) {
  ZuServerId server;
  if (text != ZuServerId::Empty().ToString() && !ZuServerId::TryParse(text, server)) return std::nullopt;
  return server;
}

struct ReadId {
  DapId id;
  std::size_t length = 0;
};

std::optional<ReadId> ReadWithServer(const std::string& text) {
  const std::size_t stroke = text.find('/');
  if (stroke == std::string::npos) return std::nullopt;
  const auto server = ReadServer(text.substr(0, stroke));
  if (!server) return std::nullopt;
  TextScanner scanner(std::string_view(text).substr(stroke + 1));
  const auto id = ReadClip(*server, scanner);
  if (!id) return std::nullopt;
  return ReadId{*id, stroke + 1 + scanner.Position()};
}

std::optional<ReadId> ReadWithoutServer(const std::string& text) {
  TextScanner scanner(text);
  const auto id = ReadClip(ZuServerId::Empty(), scanner);
  if (!id) return std::nullopt;
  return ReadId{*id, scanner.Position()};
}

std::optional<DapId> ReadUri(const std::string& uri) {
  if (uri.compare(0, uriScheme.size(), uriScheme) != 0) return std::nullopt;
  const std::size_t stroke = uri.find('/', uriScheme.size());
  if (stroke == std::string::npos) return std::nullopt;
  const auto server = ReadServer(uri.substr(uriScheme.size(), stroke - uriScheme.size()));
  TextScanner scanner(std::string_view(uri).substr(stroke));
  const auto parts = ReadPageBankRow(scanner, ReadPartOfUri);
  if (!server || !parts) return std::nullopt;
  const auto camera = ReadCameraOfUri(scanner);
  if (!camera || !scanner.IsAtEnd()) return std::nullopt;
  const auto [page, bank, row] = *parts;
  return DapId(*server, page, bank, row, *camera);
}

}  // namespace

const DapId& DapId::Empty() {
  static const DapId empty;
  return empty;
}

DapId::DapId(int position) {
  Position(position);
}

DapId::DapId(int position, char cameraLetter) : DapId(ZuServerId::Empty(), position, cameraLetter) {}

DapId::DapId(int pageNumber, int bankNumber, int rowNumber)
    : DapId(ZuServerId::Empty(), pageNumber, bankNumber, rowNumber) {}

DapId::DapId(int pageNumber, int bankNumber, int rowNumber, char cameraLetter)
    : DapId(ZuServerId::Empty(), pageNumber, bankNumber, rowNumber, cameraLetter) {}

DapId::DapId(const ZuServerId& server, int position) : serverId(server) {
  Position(position);
}

DapId::DapId(const ZuServerId& server, int position, char cameraLetter) : DapId(server, position) {
  Camera(cameraLetter);
}

DapId::DapId(const ZuServerId& server, int pageNumber, int bankNumber, int rowNumber)
    : DapId(server, pageNumber, bankNumber, rowNumber, noCamera) {}

DapId::DapId(const ZuServerId& server, int pageNumber, int bankNumber, int rowNumber, char cameraLetter)
    : serverId(server) {
  set(pageNumber, bankNumber, rowNumber, cameraLetter);
}

DapId::DapId(const std::string& text) {
  if (!TryParse(text, *this)) throw std::invalid_argument("Invalid clip identifier \"" + text + "\".");
}

void DapId::Page(int value) {
  page = CheckedByte("Page", value);
}

void DapId::Bank(int value) {
  bank = CheckedByte("Bank", value);
}

void DapId::Row(int value) {
  row = CheckedByte("Row", value);
}

void DapId::Camera(char value) {
  camera = value;
}

void DapId::Position(int value) {
  if (value < 0 || value > maxPosition) {
    throw std::invalid_argument("Position " + std::to_string(value) +
                                " of a clip must be between 0 and 999.");
  }
  set(value / 100, value / 10 % 10, value % 10, noCamera);
}

void DapId::set(int pageNumber, int bankNumber, int rowNumber, char cameraLetter) {
  Page(pageNumber);
  Bank(bankNumber);
  Row(rowNumber);
  Camera(cameraLetter);
}

bool DapId::operator==(const DapId& other) const {
  return serverId == other.serverId && page == other.page && bank == other.bank && row == other.row &&
         camera == other.camera;
}

bool DapId::IsValid() const {
  return IsValidPage(page) && IsValidBank(bank) && IsValidRow(row) && (!HasCamera() || IsValidCamera(camera));
}

int DapId::Channel() const {
  return IsValidCamera(camera) ? camera - MinCamera + 1 : 0;
}

int DapId::Position() const {
  if (page > maxDigit || bank > maxDigit || row > maxDigit) return -1;
  return page * 100 + bank * 10 + row;
}

int DapId::Index() const {
  if (!IsValidPage(page) || !IsValidBank(bank) || !IsValidRow(row)) return -1;
  return (page * MaxBank + (bank - MinBank)) * (MaxRow + 1) + row;
}

std::string DapId::ToShortString() const {
  return PartText(page) + PartText(bank) + PartText(row) + CameraText(camera);
}

std::string DapId::ToString() const {
  return serverId.ToString() + "/" + ToShortString();
}

std::string DapId::ToUri() const {
  std::string uri = std::string(uriScheme) + serverId.ToString();
  for (const int part : {Page(), Bank(), Row()})
    uri += "/" + PartOfUri(part);
  if (HasCamera()) uri += "/" + CameraOfUri(camera);
  return uri;
}

bool DapId::TryParse(const std::string& text, DapId& id, int& consumed) {
  consumed = 0;
  auto read = ReadWithServer(text);
  if (!read) read = ReadWithoutServer(text);
  if (!read) return false;
  id = read->id;
  consumed = static_cast<int>(read->length);
  return true;
}

bool DapId::TryParse(const std::string& text, DapId& id) {
  DapId whole;
  int consumed = 0;
  if (!TryParse(text, whole, consumed) || static_cast<std::size_t>(consumed) != text.size()) return false;
  id = whole;
  return true;
}

DapId DapId::FromUri(const std::string& uri) {
  const auto id = ReadUri(uri);
  if (!id) throw std::invalid_argument("Invalid clip URI \"" + uri + "\".");
  return *id;
}

}  // namespace Oru::DataModel::MediaAssets
