#include "Oru/DataModel/MediaAssets/ArchiveStatus.h"

#include "Oru/DataModel/MediaAssets/EnumerationText.h"

namespace Oru::DataModel::MediaAssets {

namespace {

const EnumerationText<ArchiveStatus>& Texts() {
  static const EnumerationText<ArchiveStatus> texts{
      {ArchiveStatus::None, "None"},
      {ArchiveStatus::ToArchive, "ToArchive"},
      {ArchiveStatus::Archived, "Archived"},
  };
  return texts;
}

}  // namespace

std::string ToString(ArchiveStatus value) {
  return Texts().ToString(value);
}

bool TryParse(const std::string& text, ArchiveStatus& value) {
  return Texts().TryParse(text, value);
}

}  // namespace Oru::DataModel::MediaAssets
