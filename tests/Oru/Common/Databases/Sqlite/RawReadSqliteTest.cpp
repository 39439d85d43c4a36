#include "Oru/Common/Databases/Sqlite/RawReadSqlite.h"

#include "Oru/Common/Databases/ArgumentException.h"

#include <gtest/gtest.h>

namespace Oru::Common::Databases::Sqlite {

TEST(RawReadSqliteTest, KeepsWhatItWasSetToAndConvertsAsAColumnDoes) {
  RawReadSqlite row;
  uint8_t bytes[] = {0x31, 0x32, 0};
  row.Set("unsigned", uint64_t{1} << 63);
  row.Set("small", uint32_t{0xffffffff});
  row.Set("bool", true);
  row.Set("bytes", bytes, 3);
  EXPECT_THROW(row.Set("bytes", bytes, -1), ArgumentException);
  EXPECT_THROW(row.Set("bytes", nullptr, 5), ArgumentException);
  EXPECT_THROW(row.Set("text", static_cast<const char*>(nullptr)), ArgumentException);
  row.SetNull("null");
  bytes[0] = 0;
  const RawReadSqlite copy(row);
  row.Reset();
  EXPECT_THROW(row.GetInt64("small"), ArgumentException);
  EXPECT_EQ(copy.GetUInt64("unsigned"), uint64_t{1} << 63);
  EXPECT_EQ(copy.GetInt64("small"), 4294967295);
  EXPECT_EQ(copy.GetInt32("small"), -1);
  EXPECT_EQ(copy.GetString("bool"), "1");
  EXPECT_EQ(copy.GetInt64("bytes"), 12);
  EXPECT_TRUE(copy.IsNull("null") && copy.GetString("null").empty() && !copy.GetBoolean("null"));
}

}  // namespace Oru::Common::Databases::Sqlite
