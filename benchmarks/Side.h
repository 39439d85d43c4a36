#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/BusinessEntityModel/Edits/Sequence.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Oru::Benchmarks {

/// The jobs that are compared, as one side does them on its file. They throw an exception when the file refuses.
///
/// Threads: an object belongs to one thread at a time.
class Side {
 public:
  using Identifier = BusinessEntityModel::BaseTypes::Identifier;
  using MediaAsset = DataModel::MediaAssets::MediaAsset;
  using AnglesMediaAssetGroup = DataModel::MediaAssets::AnglesMediaAssetGroup;
  using Sequence = BusinessEntityModel::Edits::Sequence;

  Side() = default;
  Side(const Side&) = delete;
  Side& operator=(const Side&) = delete;
  virtual ~Side() = default;

  virtual void Begin() = 0;
  virtual void Commit() = 0;

  virtual void Save(MediaAsset& asset) = 0;
  virtual int64_t FindKey(const Identifier& id) = 0;
  virtual bool GetAsset(int64_t key, MediaAsset& asset) = 0;
  virtual void ReadDeep(int64_t key, MediaAsset& asset) = 0;
  virtual void ReadLazy(int64_t key, MediaAsset& asset) = 0;
  /// @return how many assets there are
  virtual int Walk() = 0;
  /// The same without the join of the full-text index, which marks nothing where nothing is matched.
  virtual int WalkPlain() = 0;
  /// Reads the first assets whose name holds a text without wildcards.
  virtual std::vector<MediaAsset> Search(const std::string& text, int limit) = 0;
  /// Reads the assets that the full-text index finds for a word, the best first.
  virtual std::vector<MediaAsset> Match(const std::string& word, int limit) = 0;
  /// Reads the identifiers and marked names of those assets, in turn.
  virtual std::vector<std::string> MatchNames(const std::string& word, int limit) = 0;
  virtual void Delete(MediaAsset& asset) = 0;
  /// Deletes the assets with keys above one.
  virtual void DeleteAbove(int64_t key) = 0;

  virtual void SaveGroup(AnglesMediaAssetGroup& group) = 0;
  virtual void ReadGroup(const Identifier& id, AnglesMediaAssetGroup& group) = 0;
  virtual void SaveSequence(Sequence& sequence) = 0;
  virtual void ReadSequence(const Identifier& id, Sequence& sequence) = 0;
};

}  // namespace Oru::Benchmarks
