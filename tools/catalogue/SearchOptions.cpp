#include "SearchOptions.h"

#include "Oru/DataModel/MediaAssets/Utils/DapId.h"
#include "Oru/DataModel/MediaAssets/Utils/ZuServerId.h"
#include "Oru/TimePoints/Core/Duration.h"

#include <CLI/Error.hpp>
#include <CLI/Validators.hpp>

#include <ctime>
#include <exception>
#include <functional>
#include <map>
#include <regex>
#include <stdexcept>

namespace Catalogue {

namespace {

using namespace Oru::DataModel::MediaAssets;
using Database::Direction;
using Database::MediaAssetOrder;
using Database::MediaAssetSearch;
using Oru::BusinessEntityModel::BaseTypes::DateTime;
using Oru::TimePoints::Duration;

const std::map<std::string, MediaAssetOrder>& Orders() {
  static const std::map<std::string, MediaAssetOrder> orders{
      {"key", MediaAssetOrder::Key},           {"id", MediaAssetOrder::Identifier},
      {"name", MediaAssetOrder::Name},         {"created", MediaAssetOrder::CreationDate},
      {"duration", MediaAssetOrder::Duration}, {"modified", MediaAssetOrder::ModificationDate},
      {"place", MediaAssetOrder::Place},       {"relevance", MediaAssetOrder::Relevance},
  };
  return orders;
}

/// The number that an expression has found, 0 where it has found nothing.
int NumberOf(const std::ssub_match& found) {
  return found.matched ? std::stoi(found.str()) : 0;
}

DateTime DateOf(const std::string& text) {
  static const std::regex form("(\\d{4})-(\\d\\d)-(\\d\\d)(?:[T ](\\d\\d):(\\d\\d)(?::(\\d\\d))?Z?)?");
  std::smatch found;
  if (std::regex_match(text, found, form)) {
    std::tm date{};
    date.tm_year = NumberOf(found[1]) - 1900;
    date.tm_mon = NumberOf(found[2]) - 1;
    date.tm_mday = NumberOf(found[3]);
    date.tm_hour = NumberOf(found[4]);
    date.tm_min = NumberOf(found[5]);
    date.tm_sec = NumberOf(found[6]);
    std::tm normal = date;
    const std::time_t seconds = ::timegm(&normal);
    const bool isInCalendar = normal.tm_mon == date.tm_mon && normal.tm_mday == date.tm_mday &&
                              normal.tm_min == date.tm_min && normal.tm_sec == date.tm_sec;
    if (isInCalendar) return seconds;
  }
  throw std::invalid_argument("a date is as 2026-01-31 or 2026-01-31T18:05:00, in UTC");
}

Duration DurationOf(const std::string& text) {
  static const std::regex form("(?:(?:(\\d{1,5}):)?(\\d{1,5}):)?(\\d{1,5})(?:\\.(\\d{1,9}))?");
  std::smatch found;
  if (!std::regex_match(text, found, form)) {
    throw std::invalid_argument("a duration is as 90, 2.5, 1:30 or 01:30:00.040");
  }
  std::string fraction = found[4];
  fraction.resize(9, '0');
  const int64_t minutes = NumberOf(found[1]) * int64_t{60} + NumberOf(found[2]);
  return Duration::FromMinutes(minutes) + Duration::FromSeconds(NumberOf(found[3])) +
         Duration::FromNanoseconds(std::stoll(fraction));
}

/// A number of the grid, or "none".
int GridNumberOf(const std::string& text, bool (*isValid)(int), const char* range) {
  if (text == "none") return DapId::Unset;
  static const std::regex digit("\\d");
  if (std::regex_match(text, digit) && isValid(std::stoi(text))) return std::stoi(text);
  throw std::invalid_argument(std::string(range) + ", or none");
}

char CameraOf(const std::string& text) {
  if (text == "none") return 0;
  if (text.size() == 1 && DapId::IsValidCamera(text[0])) return text[0];
  throw std::invalid_argument("A to L, or none");
}

}  // namespace

void SearchOptions::AddTo(CLI::App& command) {
  // A condition is added while the command line is read.
  const auto condition = [&command](const std::string& name, const std::string& value,
                                    const std::string& help,
                                    const std::function<void(const std::string&)>& add) {
    const auto read = [name, add](const std::string& text) {
      try {
        add(text);
      } catch (const std::exception& reason) {
        throw CLI::ValidationError(name, reason.what());
      }
    };
    command.add_option_function<std::string>(name, read, help)->type_name(value)->group("Conditions");
  };
  condition("--keyword", "WORD", "With this keyword", [this](auto& text) { mSearch.Keyword(text); });
  condition("--server", "NUMBER", "On this server, or on none",
            [this](auto& text) { mSearch.OnServer(text == "none" ? ZuServerId() : ZuServerId(text)); });
  condition("--page", "NUMBER", "On this page of a server, 0 to 9, or on none",
            [this](auto& text) { mSearch.OnPage(GridNumberOf(text, DapId::IsValidPage, "0 to 9")); });
  condition("--bank", "NUMBER", "In this bank of a page, 1 to 9, or in none",
            [this](auto& text) { mSearch.OnBank(GridNumberOf(text, DapId::IsValidBank, "1 to 9")); });
  condition("--row", "NUMBER", "In this row of a bank, 0 to 9, or in none",
            [this](auto& text) { mSearch.OnRow(GridNumberOf(text, DapId::IsValidRow, "0 to 9")); });
  condition("--camera", "LETTER", "Of this camera, A to L, or of none",
            [this](auto& text) { mSearch.OnCamera(CameraOf(text)); });
  command
      .add_flag_callback(
          "--protected", [this] { mSearch.Protected(); }, "Protected from being removed")
      ->group("Conditions");
  command
      .add_flag_callback(
          "--unprotected", [this] { mSearch.Protected(false); }, "Not protected")
      ->group("Conditions");
  condition("--created-from", "DATE",
            "Created then or later; a date is as 2026-01-31 or 2026-01-31T18:05:00, in UTC",
            [this](auto& text) { mSearch.CreatedFrom(DateOf(text)); });
  condition("--created-before", "DATE", "Created earlier",
            [this](auto& text) { mSearch.CreatedBefore(DateOf(text)); });
  condition("--modified-from", "DATE", "Changed last then or later",
            [this](auto& text) { mSearch.ModifiedFrom(DateOf(text)); });
  condition("--modified-before", "DATE", "Changed last earlier",
            [this](auto& text) { mSearch.ModifiedBefore(DateOf(text)); });
  condition("--lasts-at-least", "DURATION", "From mark to mark, in seconds or as 01:30:00.040",
            [this](auto& text) { mSearch.LastsAtLeast(DurationOf(text)); });
  condition("--lasts-at-most", "DURATION", "From mark to mark",
            [this](auto& text) { mSearch.LastsAtMost(DurationOf(text)); });
  condition("--group", "GROUP", "In the group of this name", [this](auto& text) { mSearch.InGroup(text); });
  condition("--resource", "ID", "With the resource of this identifier",
            [this](auto& text) { mSearch.UsesResource(text); });

  std::vector<std::string> orders;
  for (const auto& order : Orders())
    orders.push_back(order.first);
  command.add_option("--order", mOrder, "By what the clips are ordered: " + CLI::detail::join(orders, ", "))
      ->check([](const std::string& text) {
        return Orders().count(text) > 0 ? std::string() : "there is no order '" + text + "'";
      })
      ->type_name("ORDER")
      ->group("Page");
  command.add_flag("--descending", mIsDescending, "The other way round")->group("Page");
  command.add_option("--limit", mLimit, "At most so many clips")
      ->check(CLI::NonNegativeNumber.description(""))
      ->type_name("COUNT")
      ->group("Page");
  command.add_option("--offset", mOffset, "Pass over so many clips first")
      ->check(CLI::NonNegativeNumber.description(""))
      ->type_name("COUNT")
      ->group("Page");
  command.add_option("--after", mAfter, "Only what follows this clip in the order")
      ->type_name("CLIP")
      ->group("Page");
}

MediaAssetSearch SearchOptions::Search(ClipStore& store, MediaAssetOrder byDefault) const {
  MediaAssetSearch search = mSearch;
  search.OrderBy(mOrder.empty() ? byDefault : Orders().at(mOrder),
                 mIsDescending ? Direction::Descending : Direction::Ascending);
  search.Limit(mLimit, mOffset);
  if (!mAfter.empty()) search.After(store.Find(mAfter, MediaAssetParts::Operator));
  return search;
}

}  // namespace Catalogue
