#include "Oru/BusinessEntityModel/Edits/Database/EditRepository.h"
#include "Oru/Common/Databases/Sqlite/SavepointGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupRepository.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"

#include <gtest/gtest.h>

#include <type_traits>

// Programs of others rely on these names and signatures.
namespace Oru::DataModel::MediaAssets {
namespace {

using BusinessEntityModel::BaseTypes::DateTime;
using BusinessEntityModel::BaseTypes::Identifier;
using BusinessEntityModel::Edits::Edit;
using BusinessEntityModel::Edits::Database::EditRepository;
using Common::Databases::Query;
using Common::Databases::Sqlite::DatabaseSqlite;
using Common::Databases::Sqlite::SavepointGuard;
using Common::Databases::Sqlite::TransactionGuard;
using Database::CopyResources;
using Database::DataModelDatabase;
using Database::Direction;
using Database::MediaAssetGroupRepository;
using Database::MediaAssetOrder;
using Database::MediaAssetPage;
using Database::MediaAssetRange;
using Database::MediaAssetRepository;
using Database::MediaAssetSearch;
using Database::NotStored;
using Database::NotStoredException;
using Database::Protection;
using Database::PutProgress;
using Database::RemoveOutcome;

// Whether one of a class's operations has exactly that signature.
template <class Class, class Result, class... Arguments>
constexpr bool Offers(Result (Class::*)(Arguments...)) {
  return true;
}
template <class Class, class Result, class... Arguments>
constexpr bool OffersConst(Result (Class::*)(Arguments...) const) {
  return true;
}
template <class Argument>
constexpr bool AddsCondition(MediaAssetSearch& (MediaAssetSearch::*)(Argument)) {
  return true;
}
template <class Class, class Argument>
constexpr bool isMadeOf =
    std::is_constructible_v<Class, Argument&> && !std::is_convertible_v<Argument&, Class>;

using Parts = Database::MediaAssetParts;
static_assert(std::is_same_v<std::underlying_type_t<Parts>, uint32_t>);
static_assert(Parts(0) == Parts::Row && Parts(1) == Parts::TimeBounds && Parts(2) == Parts::Metadata &&
              Parts(4) == Parts::Operator && Parts(8) == Parts::Annotations &&
              Parts(16) == Parts::Resources && Parts(32) == Parts::Tracks && Parts(63) == Parts::All);
static_assert((Parts::Operator | Parts::Tracks) == Parts(36) &&
              (Parts::All & Parts::Tracks) == Parts::Tracks);
static_assert(OffersConst<MediaAsset, Parts>(&MediaAsset::HeldParts));
static_assert(Offers<MediaAsset, void, Parts>(&MediaAsset::HeldParts));

static_assert(AddsCondition<const std::string&>(&MediaAssetSearch::Typed));
static_assert(AddsCondition<const std::string&>(&MediaAssetSearch::NameContains));
static_assert(AddsCondition<const std::string&>(&MediaAssetSearch::Keyword));
static_assert(AddsCondition<const ZuServerId&>(&MediaAssetSearch::OnServer));
static_assert(AddsCondition<int>(&MediaAssetSearch::OnPage));
static_assert(AddsCondition<int>(&MediaAssetSearch::OnBank));
static_assert(AddsCondition<int>(&MediaAssetSearch::OnRow));
static_assert(AddsCondition<char>(&MediaAssetSearch::OnCamera));
static_assert(AddsCondition<bool>(&MediaAssetSearch::Protected));
static_assert(AddsCondition<DateTime>(&MediaAssetSearch::CreatedFrom));
static_assert(AddsCondition<DateTime>(&MediaAssetSearch::CreatedBefore));
static_assert(AddsCondition<DateTime>(&MediaAssetSearch::ModifiedFrom));
static_assert(AddsCondition<DateTime>(&MediaAssetSearch::ModifiedBefore));
static_assert(AddsCondition<const TimePoints::Duration&>(&MediaAssetSearch::LastsAtLeast));
static_assert(AddsCondition<const TimePoints::Duration&>(&MediaAssetSearch::LastsAtMost));
static_assert(AddsCondition<const Identifier&>(&MediaAssetSearch::InGroup));
static_assert(AddsCondition<const Identifier&>(&MediaAssetSearch::UsesResource));
static_assert(AddsCondition<const Query&>(&MediaAssetSearch::Where));
static_assert(
    Offers<MediaAssetSearch, MediaAssetSearch&, MediaAssetOrder, Direction>(&MediaAssetSearch::OrderBy));
static_assert(Offers<MediaAssetSearch, MediaAssetSearch&, int64_t, int64_t>(&MediaAssetSearch::Limit));
static_assert(AddsCondition<const MediaAsset&>(&MediaAssetSearch::After));
static_assert(std::is_default_constructible_v<MediaAssetSearch> &&
              std::is_copy_assignable_v<MediaAssetSearch>);

using Repository = MediaAssetRepository;
static_assert(isMadeOf<Repository, DataModelDatabase>);
static_assert(Offers<Repository, std::optional<MediaAsset>, const Identifier&, Parts>(&Repository::Find));
static_assert(Offers<Repository, MediaAssetPage, const MediaAssetSearch&, Parts>(&Repository::Find));
static_assert(Offers<Repository, int64_t, const MediaAssetSearch&>(&Repository::Count));
static_assert(Offers<Repository, MediaAssetRange, const MediaAssetSearch&, Parts>(&Repository::Each));
static_assert(Offers<Repository, void, MediaAsset&>(&Repository::Put));
static_assert(Offers<Repository, std::vector<NotStored>, std::vector<MediaAsset>&, const PutProgress&>(
    &Repository::PutAll<std::vector<MediaAsset>&>));
static_assert(Offers<Repository, MediaAsset, const Identifier&, const std::function<void(MediaAsset&)>&>(
    &Repository::Change));
static_assert(
    Offers<Repository, MediaAsset, const Identifier&, const Identifier&, CopyResources>(&Repository::Copy));
static_assert(Offers<Repository, RemoveOutcome, const Identifier&, Protection>(&Repository::Remove));
static_assert(Offers<Repository, int64_t, const MediaAssetSearch&, Protection>(&Repository::RemoveAll));
static_assert(std::is_same_v<decltype(&Repository::ForgetKeys), void (*)(MediaAsset&)>);
static_assert(std::is_same_v<PutProgress, std::function<bool(int64_t, int64_t)>>);
static_assert(std::is_base_of_v<std::runtime_error, NotStoredException>);
static_assert(std::is_constructible_v<NotStoredException, const Identifier&, const std::string&>);
static_assert(OffersConst<NotStoredException, const Identifier&>(&NotStoredException::Id));
static_assert(noexcept(std::declval<const NotStoredException&>().Id()));

using Groups = MediaAssetGroupRepository;
static_assert(isMadeOf<Groups, DataModelDatabase>);
static_assert(Offers<Groups, std::optional<MediaAssetGroup>, const Identifier&>(&Groups::Find));
static_assert(Offers<Groups, std::optional<AnglesMediaAssetGroup>, const Identifier&>(&Groups::FindAngles));
static_assert(Offers<Groups, std::vector<MediaAssetGroup>>(&Groups::All));
static_assert(Offers<Groups, void, MediaAssetGroup&>(&Groups::Put));
static_assert(Offers<Groups, void, AnglesMediaAssetGroup&>(&Groups::Put));
static_assert(Offers<Groups, bool, const Identifier&>(&Groups::Remove));

static_assert(isMadeOf<EditRepository, DatabaseSqlite>);
static_assert(Offers<EditRepository, std::optional<Edit>, const Identifier&>(&EditRepository::Find));
static_assert(Offers<EditRepository, std::vector<Edit>>(&EditRepository::All));
static_assert(Offers<EditRepository, void, Edit&>(&EditRepository::Put));
static_assert(Offers<EditRepository, bool, const Identifier&>(&EditRepository::Remove));

static_assert(isMadeOf<SavepointGuard, DatabaseSqlite>);
static_assert(Offers<SavepointGuard, void>(&SavepointGuard::Commit));
static_assert(Offers<SavepointGuard, void>(&SavepointGuard::Rollback));
static_assert(OffersConst<SavepointGuard, bool>(&SavepointGuard::IsActive));
static_assert(Offers<DatabaseSqlite, bool>(&DatabaseSqlite::HasChanged));
static_assert(OffersConst<DatabaseSqlite, std::string>(&DatabaseSqlite::LastFailure));
static_assert(std::is_same_v<decltype(&DatabaseSqlite::TuneForThreads), bool (*)()>);

// What a call may leave out, and that all of it links.
TEST(RepositorySignaturesTest, CallsMayLeaveOutWhatIsUsual) {
  DataModelDatabase database(":memory:", nullptr);
  MediaAssetRepository clips(database);
  database.Open();
  MediaAsset clip("clip-1");
  clip.HeldParts(Parts::Row | Parts::Operator);
  clips.Put(clip);
  std::vector<MediaAsset> batch = {MediaAsset("clip-2"), MediaAsset("")};
  const std::vector<NotStored> leftOut = clips.PutAll(batch);
  ASSERT_EQ(leftOut.size(), 1U);
  EXPECT_EQ(leftOut[0].reason, "the asset has no identifier");
  EXPECT_TRUE(leftOut[0].id.IsEmpty());
  for (MediaAsset& each : clips.Each(MediaAssetSearch().OnPage(DapId::Unset).Protected(false))) {
    each.Name("walked");
    clips.Put(each);
  }
  EXPECT_EQ(clips.Find("clip-1")->Name(), "walked");
  EXPECT_EQ(clips.Change("clip-1", [](MediaAsset& stored) { stored.Name("changed"); }).Name(), "changed");
  EXPECT_EQ(clips.Copy("clip-1", "clip-3", CopyResources::Share).Id(), "clip-3");
  const auto search = MediaAssetSearch().OrderBy(MediaAssetOrder::Identifier).Limit(2);
  const MediaAssetPage page = clips.Find(search);
  EXPECT_EQ(page.total, 3);
  EXPECT_EQ(clips.Find(MediaAssetSearch(search).After(page.assets.back())).assets.size(), 1U);

  const auto keepOne = [&] {
    TransactionGuard transaction(database);
    SavepointGuard savepoint(database);
    EXPECT_EQ(clips.Remove("clip-1"), RemoveOutcome::Removed);
    savepoint.Commit();
    EXPECT_FALSE(savepoint.IsActive());
    SavepointGuard undone(database);
    EXPECT_EQ(clips.RemoveAll(MediaAssetSearch()), 2);
    undone.Rollback();
    transaction.Commit();
  };
  keepOne();
  EXPECT_EQ(clips.Count(MediaAssetSearch()), 2);
  EXPECT_FALSE(database.HasChanged());
  EXPECT_EQ(database.LastFailure(), "");

  MediaAssetGroupRepository groups(database);
  AnglesMediaAssetGroup group("group-1", "Penalty");
  groups.Put(group);
  EXPECT_TRUE(groups.Find("group-1") && groups.FindAngles("group-1") && groups.All().size() == 1);
  EditRepository edits(database);
  Edit edit("edit-1");
  edits.Put(edit);
  EXPECT_TRUE(edits.Find("edit-1") && edits.All().size() == 1 && edits.Remove("edit-1"));
  EXPECT_TRUE(groups.Remove("group-1"));
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
