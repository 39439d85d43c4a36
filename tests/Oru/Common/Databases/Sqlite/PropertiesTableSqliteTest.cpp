#include "Oru/Common/Databases/Sqlite/PropertiesTableSqlite.h"

#include "support/CapturedLog.h"
#include "support/SqlValues.h"

#include <gtest/gtest.h>

namespace Oru::Common::Databases::Sqlite {

class PropertiesTableSqliteTest : public testing::Test {
 protected:
  PropertiesTableSqliteTest() {
    db.Open();
    table.Create();
  }
  static Property Make(const std::string& name, const std::string& text, int32_t number) {
    Property property;
    property.SetName(name);
    property.SetStringValue(text);
    property.SetIntValue(number);
    return property;
  }

  TestSupport::CapturedLog log;
  DatabaseSqlite db{":memory:", log.Stream()};
  PropertiesTableSqlite table{"Props", db};
};

TEST_F(PropertiesTableSqliteTest, KeepsOneRowPerNameWhateverTheNameHolds) {
  const std::vector<std::string> names = {"version", "it's", "stringValue", "", "100%", {"a\0b", 3}, "a"};
  for (const std::string& name : names) {
    Property first = Make(name, "first", 1), again = Make(name, name + "'s", -5);
    EXPECT_EQ(table.GetObjectIdFromName(name), -1);
    EXPECT_TRUE(table.Save(first) && table.Save(again));
    EXPECT_EQ(first.ObjectId(), again.ObjectId());
  }
  table.Create();
  for (const std::string& name : names) {
    Property read;
    ASSERT_TRUE(table.GetObject(name, read)) << name;
    EXPECT_EQ(read.GetName() + "'s", read.GetStringValue());
    EXPECT_EQ(read.GetName(), name);
    EXPECT_EQ(read.GetIntValue(), -5);
    EXPECT_EQ(table.GetObjectIdFromName(name), read.ObjectId());
  }
  EXPECT_EQ(TestSupport::Value(db, "SELECT count(*) FROM Props"), std::to_string(names.size()));
}

}  // namespace Oru::Common::Databases::Sqlite
