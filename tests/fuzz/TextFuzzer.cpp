// The parsers of identifiers and time codes: whatever one takes, it writes and reads back; the rest it
// refuses. And searches: the full-text index takes what is made of any text.
#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/FullTextExpression.h"
#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"
#include "Oru/DataModel/MediaAssets/Utils/DapId.h"
#include "Oru/DataModel/MediaAssets/Utils/ZuServerId.h"
#include "Oru/TimePoints/Core/Formatters/ClockDurationFormatter.h"
#include "Oru/TimePoints/Core/Formatters/ClockTimeCodeFormatter.h"
#include "Oru/TimePoints/Core/Formatters/UtcTimeBoundsFormatter.h"
#include "Oru/TimePoints/Core/Parsers/ClockDurationParser.h"
#include "Oru/TimePoints/Core/Parsers/ClockTimeCodeParser.h"
#include "Oru/TimePoints/Core/Parsers/UtcTimeBoundsParser.h"
#include "Oru/TimePoints/Core/TimeBounds.h"
#include "Oru/TimePoints/Core/TimeCode.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

using namespace Oru;

namespace {

void Require(bool holds) {
  if (!holds) abort();
}

// A text is refused by std::invalid_argument alone.
template <class Read, class Write>
void RoundTrip(const std::string& text, Read read, Write write) {
  try {
    const auto value = read(text);
    Require(read(write(value)) == value);
  } catch (const std::invalid_argument&) {
  }
}

template <class Value, class Parser, class Formatter>
void RoundTrip(const std::string& text, Parser parser, const Formatter& formatter) {
  RoundTrip(
      text, [&](const std::string& from) { return Value::Parse(from, parser); },
      [&](const Value& value) { return value.ToString(formatter); });
}

// A database with a full-text index of one row.
struct Index {
  Index() {
    db.Open();
    Require(
        db.ExecuteStatement("CREATE VIRTUAL TABLE Found USING fts5(text);"
                            "INSERT INTO Found VALUES ('one word')"));
  }
  Common::Databases::Sqlite::DatabaseSqlite db{":memory:", nullptr};
};

// A step throws where the index refuses the expression.
void Search(const std::string& expression) {
  static Index index;
  Common::Databases::Sqlite::QuerySqlite query;
  query.Match("Found", expression);
  Common::Databases::Sqlite::CursorSqlite(index.db, "SELECT * FROM Found WHERE " + query.GetFilterSQL())
      .Step();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  using namespace DataModel::MediaAssets;
  const std::string text(reinterpret_cast<const char*>(data), size);
  RoundTrip(
      text, [](const std::string& from) { return ZuServerId(from); },
      [](const ZuServerId& id) { return id.ToString(); });
  RoundTrip(text, ZuServerId::FromUri, [](const ZuServerId& id) { return id.ToUri(); });
  RoundTrip(text, DapId::FromUri, [](const DapId& id) { return id.ToUri(); });
  DapId id, again;
  if (DapId::TryParse(text, id)) Require(DapId::TryParse(id.ToString(), again) && again == id);
  RoundTrip<TimePoints::Duration>(text, TimePoints::ClockDurationParser(),
                                  TimePoints::ClockDurationFormatter());
  RoundTrip<TimePoints::TimeBounds>(text, TimePoints::UtcTimeBoundsParser(),
                                    TimePoints::UtcTimeBoundsFormatter());
  for (const TimePoints::Rate& rate : {TimePoints::Rate(50, 1), TimePoints::Rate(30000, 1001)}) {
    RoundTrip<TimePoints::TimeCode>(text, TimePoints::ClockTimeCodeParser(rate),
                                    TimePoints::ClockTimeCodeFormatter());
  }
  using Common::Databases::Sqlite::FullTextExpression;
  Search(FullTextExpression::AllWords(text));
  Search(FullTextExpression::AllWordsAsTyped(text));
  Search(FullTextExpression::AnyWord(text));
  Search(FullTextExpression::InColumn("text", FullTextExpression::Phrase(text)));
  return 0;
}
