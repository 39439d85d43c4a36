#include "support/Prelude.h"

namespace Oru::Common::Databases {

TEST(NotSupportedExceptionTest, ExceptionsGiveTextsThatCallersMayCompareWith) {
  const NotSupportedException exception("file is not a database", "Open.cpp", 42);
  EXPECT_STREQ(NotSupportedException(exception).what(),
               "Not supported exception : file is not a database (in file Open.cppat line 42)");
  EXPECT_STREQ(ArgumentException().what(), "Wrong arguement exception");
  EXPECT_STREQ(InvalidOperationException().what(), "Invalid Operation Exception");
  EXPECT_STREQ(ObjectClosedException().what(), "Object closed excpetion");
}

}  // namespace Oru::Common::Databases
