#include "Oru/DataModel/MediaAssets/Utils/ZuServerId.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>

namespace Oru::DataModel::MediaAssets {
namespace {

using testing::HasSubstr;
using testing::StrEq;
using testing::ThrowsMessage;

TEST(ZuServerIdTest, ValidNumbersAreTheMultiplesOfTenAboveZero) {
  for (const int valid : {10, 110, 2147483640}) {
    EXPECT_TRUE(ZuServerId::IsValid(valid)) << valid;
    EXPECT_EQ(ZuServerId(valid).SerialNumber(), valid);
  }
  for (const int invalid : {0, -10, 15, 25, 2147483647, -2147483647 - 1}) {
    EXPECT_FALSE(ZuServerId::IsValid(invalid)) << invalid;
    EXPECT_THAT([&] { ZuServerId id(invalid); },
                ThrowsMessage<std::invalid_argument>(
                    StrEq("Invalid server serial number " + std::to_string(invalid) + ".")));
  }
}

TEST(ZuServerIdTest, TextsReadBack) {
  for (const ZuServerId& id : {ZuServerId(), ZuServerId(10), ZuServerId(110), ZuServerId(2147483640)}) {
    const std::string number = std::to_string(id.SerialNumber());
    EXPECT_EQ(id.ToString(), number);
    EXPECT_EQ(ZuServerId(id.ToString()), id);
    EXPECT_EQ(id.ToUri(), "zuserver://" + number);
    EXPECT_EQ(ZuServerId::FromUri(id.ToUri()), id);
  }
  EXPECT_NE(ZuServerId(10), ZuServerId(20));
}

TEST(ZuServerIdTest, OtherTextsAreRefused) {
  for (const std::string text : {"", "15", "-10", "+10", " 10", "10 ", "010", "00", "1e1", "10.0", "ten",
                                 "2147483650", "99999999999999999990"}) {
    ZuServerId id(70);
    EXPECT_FALSE(ZuServerId::TryParse(text, id)) << text;
    EXPECT_EQ(id, ZuServerId(70)) << text;
    EXPECT_THAT([&] { ZuServerId refused(text); },
                ThrowsMessage<std::invalid_argument>(HasSubstr("\"" + text + "\"")));
    EXPECT_THAT([&] { ZuServerId::FromUri("zuserver://" + text); },
                ThrowsMessage<std::invalid_argument>(HasSubstr("\"zuserver://" + text + "\"")));
  }
  for (const std::string uri : {"110", "zuserver:110", "ZUSERVER://110", "dap://110", "zuserver://110/"}) {
    EXPECT_THROW(ZuServerId::FromUri(uri), std::invalid_argument) << uri;
  }
  const std::string withNul("10\0", 3);
  ZuServerId id;
  EXPECT_FALSE(ZuServerId::TryParse(withNul, id));
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
