#include "Oru/DataModel/MediaAssets/Utils/ZuServerId.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>

namespace Oru::DataModel::MediaAssets {
namespace {

using testing::HasSubstr;
using testing::ThrowsMessage;

TEST(ZuServerIdTest, ValidNumbersAreTheMultiplesOfTenAboveZeroAndReadBack) {
  for (const int valid : {10, 110, 2147483640}) {
    const ZuServerId id(valid);
    EXPECT_EQ(id.ToUri(), "zuserver://" + std::to_string(valid));
    EXPECT_TRUE(ZuServerId(id.ToString()) == id && ZuServerId::FromUri(id.ToUri()) == id);
  }
  for (const int invalid : {0, -10, 15, 2147483647, -2147483647 - 1}) {
    EXPECT_FALSE(ZuServerId::IsValid(invalid)) << invalid;
    EXPECT_THAT([&] { ZuServerId id(invalid); },
                ThrowsMessage<std::invalid_argument>("Invalid server serial number " +
                                                     std::to_string(invalid) + "."));
  }
}

TEST(ZuServerIdTest, OtherTextsAreRefused) {
  for (const std::string text : {"", "0", "15", "-10", "+10", " 10", "10 ", "010", "00", "1e1", "10.0", "ten",
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
  ZuServerId id;
  EXPECT_FALSE(ZuServerId::TryParse(std::string("10\0", 3), id));
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
