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
  for (const DapId& other :
       {DapId(1, 2, 3, 'C'), DapId(server110, 0, 2, 3, 'C'), DapId(server110, 1, 0, 3, 'C'),
        DapId(server110, 1, 2, 0, 'C'), DapId(server110, 1, 2, 3)})
    EXPECT_NE(other, whole) << other.ToString();
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

TEST(DapIdTest, LimitsOfTheGrid) {
  for (int number = 0; number < 256; ++number) {
    EXPECT_EQ(DapId(number, 1, 1).IsValid(), number <= 9) << number;
    EXPECT_EQ(DapId(1, number, 1).IsValid(), number >= 1 && number <= 9) << number;
    EXPECT_EQ(DapId(1, 1, number).IsValid(), number <= 9) << number;
    const char camera = static_cast<char>(number);
    const DapId id(1, 1, 1, camera);
    const std::size_t channel = std::string("-ABCDEFGHIJKL").find(camera, 1);
    EXPECT_EQ(DapId::IsValidCamera(camera), channel != std::string::npos) << number;
    EXPECT_EQ(id.IsValid(), channel != std::string::npos || number == 0) << number;
    EXPECT_EQ(id.HasCamera(), number != 0) << number;
    EXPECT_EQ(id.Channel(), channel == std::string::npos ? 0 : static_cast<int>(channel)) << number;
  }
}

TEST(DapIdTest, PositionsAndIndexesOfTheGrid) {
  int index = 0;
  for (int page = 0; page <= 9; ++page) {
    for (int bank = 1; bank <= 9; ++bank) {
      for (int row = 0; row <= 9; ++row) {
        const DapId id(page, bank, row);
        EXPECT_EQ(id.Index(), index++);
        EXPECT_EQ(DapId(id.Position()), id);
      }
    }
  }
  EXPECT_EQ(index, 900);
  EXPECT_EQ(DapId(1, 0, 5).Position(), 105);
  EXPECT_EQ(DapId(1, 0, 5).Index(), -1);
  for (const DapId& off : {DapId(), DapId(10, 1, 1), DapId(1, 255, 1), DapId(1, 1, 10)}) {
    EXPECT_EQ(off.Position(), -1) << off.ToString();
    EXPECT_EQ(off.Index(), -1) << off.ToString();
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

TEST(DapIdTest, EveryIdReadsBackAndNoTwoShareAText) {
  const int numbers[] = {0, 1, 9, 10, 99, 254, 255};
  const char cameras[] = {0, 1, '(', '-', '/', '0', '9', 'A', 'L', 'M', 'a', '\x80', '\xff'};
  std::set<std::string> texts;
  std::size_t count = 0;
  for (int choice = 0; choice < 3 * 7 * 7 * 7 * 13; ++choice, count += 2) {
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
  EXPECT_EQ(texts.size(), count);
}

TEST(DapIdTest, APrefixIsReadAsFarAsItGoes) {
  const struct {
    std::string text;
    DapId id;
    std::size_t consumed;
  } cases[] = {
      {"111A", DapId(1, 1, 1, 'A'), 4},
      {"111AB", DapId(1, 1, 1, 'A'), 4},
      {"1112", DapId(1, 1, 1), 3},
      {"111a", DapId(1, 1, 1), 3},
      {"111(", DapId(1, 1, 1), 3},
      {"111(0)", DapId(1, 1, 1), 3},
      {"111(65)", DapId(1, 1, 1), 3},
      {"111(033)", DapId(1, 1, 1), 3},
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

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
