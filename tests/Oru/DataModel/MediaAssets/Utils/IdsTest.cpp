#include "Oru/DataModel/MediaAssets/Utils/DapId.h"

#include <gmock/gmock.h>

#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets {
namespace {

using testing::HasSubstr;
using testing::ThrowsMessage;

const ZuServerId server110(110);

TEST(DapIdTest, ConstructorsPutEachNumberInItsPlace) {
  const DapId whole(server110, 1, 2, 3, 'C');
  EXPECT_EQ(DapId(server110, 123, 'C'), whole);
  EXPECT_EQ(DapId(server110, 1, 2, 3), DapId(server110, 123));
  EXPECT_EQ(DapId(1, 2, 3), DapId(123));
  EXPECT_EQ(DapId(1, 2, 3, 'C'), DapId(123, 'C'));
  EXPECT_EQ(whole.Row(), whole.Clip());
  EXPECT_EQ(DapId(ZuServerId(), 255, 255, 255), DapId::Empty());
}

TEST(DapIdTest, NumbersThatABytesOrAPositionCannotHoldAreRefused) {
  const auto refuses = [](const std::string& what) {
    return ThrowsMessage<std::invalid_argument>(HasSubstr(what));
  };
  for (const int value : {-1, 256, -2147483647 - 1}) {
    EXPECT_THAT([&] { DapId(value, 1, 1); }, refuses("Page " + std::to_string(value)));
    EXPECT_THAT([&] { DapId(1, value, 1); }, refuses("Bank " + std::to_string(value)));
    EXPECT_THAT([&] { DapId(1, 1, value); }, refuses("Row " + std::to_string(value)));
  }
  EXPECT_THAT([&] { DapId id(-1); }, refuses("Position -1"));
  EXPECT_THAT([&] { DapId id(1000); }, refuses("Position 1000"));
}

// Pages and rows 0 to 9 and banks 1 to 9 are on the grid; bank 0 has a position and no index.
TEST(DapIdTest, LimitsPositionsAndIndexesOfTheGrid) {
  int index = 0;
  for (const int page : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 255}) {
    for (int bank = 0; bank < 11; ++bank) {
      for (int row = 0; row < 11; ++row) {
        const DapId id(page, bank, row);
        const bool hasPosition = page < 10 && bank < 10 && row < 10, isOnGrid = hasPosition && bank > 0;
        ASSERT_EQ(id.IsValid(), isOnGrid) << id.ToString();
        ASSERT_EQ(id.Index(), isOnGrid ? index++ : -1) << id.ToString();
        ASSERT_EQ(id.Position(), hasPosition ? 100 * page + 10 * bank + row : -1) << id.ToString();
        if (hasPosition) {
          ASSERT_EQ(DapId(id.Position()), id);
        }
      }
    }
  }
  EXPECT_EQ(index, 900);
  for (int number = 0; number < 256; ++number) {
    const char camera = static_cast<char>(number);
    const DapId id(1, 1, 1, camera);
    const std::size_t channel = std::string("-ABCDEFGHIJKL").find(camera, 1);
    EXPECT_EQ(DapId::IsValidCamera(camera), channel != std::string::npos) << number;
    EXPECT_EQ(id.IsValid(), channel != std::string::npos || number == 0) << number;
    EXPECT_EQ(id.HasCamera(), number != 0) << number;
    EXPECT_EQ(id.Channel(), channel == std::string::npos ? 0 : static_cast<int>(channel)) << number;
  }
}

TEST(DapIdTest, TextForms) {
  const struct {
    DapId id;
    const char *shortText, *text, *uri;
  } cases[] = {
      {DapId(server110, 1, 1, 1, 'A'), "111A", "110/111A", "dap://110/1/1/1/A"},
      {DapId(), "---", "0/---", "dap://0/-/-/-"},
      {DapId(12, 1, 255, '!'), "(12)1-(33)", "0/(12)1-(33)", "dap://0/12/1/-/33"},
      {DapId(254, 10, 0, '\xff'), "(254)(10)0(255)", "0/(254)(10)0(255)", "dap://0/254/10/0/255"},
  };
  for (const auto& [id, shortText, text, uri] : cases) {
    EXPECT_EQ(id.ToShortString(), shortText);
    EXPECT_EQ(id.ToString(), text);
    EXPECT_EQ(id.ToUri(), uri);
  }
}

TEST(DapIdTest, EveryIdReadsBackAndNoTwoShareATextOrAreEqual) {
  const int numbers[] = {0, 1, 9, 10, 99, 254, 255};
  const char cameras[] = {0, 1, '(', '-', '/', '0', '9', 'A', 'L', 'M', 'a', '\x80', '\xff'};
  std::set<std::string> texts;
  constexpr std::size_t count = 3 * 7 * 7 * 7 * 13;
  for (std::size_t choice = 0; choice < count; ++choice) {
    const ZuServerId server = choice % 3 == 0 ? ZuServerId() : ZuServerId(choice % 3 == 1 ? 110 : 2147483640);
    const int page = numbers[choice / 3 % 7], bank = numbers[choice / 21 % 7],
              row = numbers[choice / 147 % 7];
    const char camera = cameras[choice / 1029];
    const DapId id(server, page, bank, row, camera);
    ASSERT_EQ(DapId(id.ToString()), id) << id.ToString();
    ASSERT_EQ(DapId::FromUri(id.ToUri()), id) << id.ToUri();
    ASSERT_EQ(DapId(id.ToShortString()), DapId(page, bank, row, camera)) << id.ToShortString();
    texts.insert({id.ToString(), id.ToUri()});
  }
  EXPECT_EQ(texts.size(), 2 * count);
  const DapId whole(server110, 1, 2, 3, 'C');
  for (const DapId& other :
       {DapId(1, 2, 3, 'C'), DapId(server110, 0, 2, 3, 'C'), DapId(server110, 1, 0, 3, 'C'),
        DapId(server110, 1, 2, 0, 'C'), DapId(server110, 1, 2, 3)})
    EXPECT_NE(other, whole) << other.ToString();
}

TEST(DapIdTest, APrefixIsReadAsFarAsItGoes) {
  const struct {
    std::string text;
    DapId id;
    std::size_t consumed;
  } cases[] = {
      {"111A", DapId(1, 1, 1, 'A'), 4},
      {"1112", DapId(1, 1, 1), 3},
      {"111a", DapId(1, 1, 1), 3},
      {"111(", DapId(1, 1, 1), 3},
      {"111(65)", DapId(1, 1, 1), 3},
      {"111(256)", DapId(1, 1, 1), 3},
      {"----", DapId(), 3},
      {"110/x", DapId(1, 1, 0), 3},
      {"115/111", DapId(1, 1, 5), 3},
      {"110/111A,110/112A", DapId(server110, 1, 1, 1, 'A'), 8},
  };
  for (const auto& [text, expected, count] : cases) {
    DapId id(9, 9, 9), whole;
    int consumed = -1;
    EXPECT_TRUE(DapId::TryParse(text, id, consumed)) << text;
    EXPECT_EQ(id, expected) << text;
    EXPECT_EQ(static_cast<std::size_t>(consumed), count) << text;
    EXPECT_EQ(DapId::TryParse(text, whole), count == text.size()) << text;
  }
}

TEST(DapIdTest, OtherTextsAreRefused) {
  for (const std::string text : {"", "1", "11", "A111", " 111", "1 11", "(9)11", "(255)11", "(256)11", "(12",
                                 "(12)", "/111", "+1+1+1", "15/(12)x"}) {
    DapId id(server110, 1, 2, 3, 'D');
    int consumed = -1;
    EXPECT_FALSE(DapId::TryParse(text, id, consumed)) << text;
    EXPECT_EQ(consumed, 0) << text;
    EXPECT_EQ(id, DapId(server110, 1, 2, 3, 'D')) << text;
    EXPECT_THAT([&] { DapId refused(text); },
                ThrowsMessage<std::invalid_argument>(HasSubstr("\"" + text + "\"")));
  }
  for (const std::string uri :
       {"", "dap://", "dap://110", "dap://110/1/1", "dap://110/1/1/1/", "dap://110/1/1/1/A/",
        "dap://110/1/1/1/AB", "dap://110/1/1/1/65", "dap://110/1/1/1/0", "dap://110/01/1/1",
        "dap://110/255/1/1", "dap://15/1/1/1", "dap:///1/1/1", "DAP://110/1/1/1", "110/1/1/1",
        "dap://110/1/1/1 "}) {
    EXPECT_THAT([&] { DapId::FromUri(uri); },
                ThrowsMessage<std::invalid_argument>(HasSubstr("\"" + uri + "\"")))
        << uri;
  }
}

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
  const std::string texts[] = {"",    "0",  "15",  "-10",  "+10", " 10",       "10 ",
                               "010", "00", "1e1", "10.0", "ten", "2147483650"};
  for (const std::string& text : texts) {
    ZuServerId id(70);
    EXPECT_FALSE(ZuServerId::TryParse(text, id)) << text;
    EXPECT_EQ(id, ZuServerId(70)) << text;
    EXPECT_THAT([&] { ZuServerId refused(text); },
                ThrowsMessage<std::invalid_argument>(HasSubstr("\"" + text + "\"")));
    EXPECT_THROW(ZuServerId::FromUri("zuserver://" + text), std::invalid_argument) << text;
  }
  ZuServerId id;
  EXPECT_FALSE(ZuServerId::TryParse(std::string("10\0", 3), id));
  for (const std::string uri : {"110", "zuserver:110", "ZUSERVER://110", "dap://110", "zuserver://110/"})
    EXPECT_THAT([&] { ZuServerId::FromUri(uri); },
                ThrowsMessage<std::invalid_argument>(HasSubstr("\"" + uri + "\"")));
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
