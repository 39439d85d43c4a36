#pragma once

#include "Oru/DataModel/MediaAssets/Database/MediaAssetSearch.h"

#include "ClipStore.h"
#include "Console.h"
#include "SearchOptions.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace Catalogue {

/// The commands that show what the catalogue holds. Each gives the exit status.
class ReadingCommands {
 public:
  ReadingCommands(ClipStore& store, const Console& console) : mStore(store), mConsole(console) {}

  int List(const std::string& nameContains, const SearchOptions& options);
  /// Shows the clips that hold all of the words, or words that begin so, in their names and descriptions; status 1 for
  /// none.
  int Search(const std::vector<std::string>& words, const SearchOptions& options);
  int Show(const std::string& clip);
  int Groups();
  int Edits();

 private:
  /// What a search shows of a clip. What matched is between "<b>" and "</b>".
  struct Texts {
    std::string name;
    std::string description;
  };

  /// The texts of the clips that a search has found, by their keys.
  std::map<int64_t, Texts> HighlightedTexts(const std::vector<ClipStore::MediaAsset>& hits,
                                            const std::string& words);
  /// Says how many clips there are beside those of the page.
  void SayHowMany(int64_t shown, const Oru::DataModel::MediaAssets::Database::MediaAssetSearch& search);

  ClipStore& mStore;
  const Console& mConsole;
};

}  // namespace Catalogue
