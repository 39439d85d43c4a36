#include "Oru/DataModel/MediaAssets/Utils/ZuServerId.h"

#include "Oru/DataModel/MediaAssets/Utils/TextScanner.h"

#include <limits>
#include <stdexcept>
#include <string_view>

namespace Oru::DataModel::MediaAssets {

namespace {

constexpr std::string_view uriScheme = "zuserver://";

}  // namespace

ZuServerId::ZuServerId(const std::string& text) {
  Parse(text);
}

const ZuServerId& ZuServerId::Empty() {
  static const ZuServerId empty;
  return empty;
}

void ZuServerId::Parse(const std::string& text) {
  if (!TryParse(text, *this)) throw std::invalid_argument("Invalid server serial number \"" + text + "\".");
}

std::string ZuServerId::ToString() const {
  return std::to_string(serialNumber);
}

std::string ZuServerId::ToUri() const {
  return std::string(uriScheme) + ToString();
}

bool ZuServerId::TryParse(const std::string& text, ZuServerId& server) {
  TextScanner scanner(text);
  const auto number = scanner.Number(0, std::numeric_limits<int>::max());
  if (!number || !scanner.IsAtEnd() || !IsValid(*number)) return false;
  server.serialNumber = *number;
  return true;
}

ZuServerId ZuServerId::FromUri(const std::string& uri) {
  TextScanner scanner(uri);
  ZuServerId server;
  if (!scanner.Accept(uriScheme) || !TryParse(uri.substr(scanner.Position()), server)) {
    throw std::invalid_argument("Invalid server URI \"" + uri + "\".");
  }
  return server;
}

}  // namespace Oru::DataModel::MediaAssets
