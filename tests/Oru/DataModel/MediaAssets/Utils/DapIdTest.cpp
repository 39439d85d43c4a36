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

TEST(DapIdTest, EmptyIdHasTheValuesThatMeanUnset) {
  const DapId& empty = DapId::Empty();
  EXPECT_EQ(empty.ServerId().SerialNumber(), 0);
  EXPECT_EQ(empty.Page(), 255);
  EXPECT_EQ(empty.Bank(), 255);
  EXPECT_EQ(empty.Row(), 255);
  EXPECT_EQ(empty.Clip(), 255);
  EXPECT_EQ(empty.Camera(), 0);
  EXPECT_TRUE(empty.IsEmpty());
  EXPECT_TRUE(DapId(empty.ServerId(), empty.Page(), empty.Bank(), empty.Row(), empty.Camera()).IsEmpty());
  EXPECT_FALSE(DapId(server110, 255, 255, 255).IsEmpty());
}

TEST(DapIdTest, ConstructorsPutEachNumberInItsPlace) {
  const DapId whole(server110, 1, 2, 3, 'C');
  EXPECT_EQ(whole.ServerId(), server110);
  EXPECT_EQ(whole.Page(), 1);
  EXPECT_EQ(whole.Bank(), 2);
  EXPECT_EQ(whole.Row(), 3);
  EXPECT_EQ(whole.Clip(), 3);
  EXPECT_EQ(whole.Camera(), 'C');

  EXPECT_EQ(DapId(server110, 123, 'C'), whole);
  EXPECT_EQ(DapId(server110, 1, 2, 3), DapId(server110, 123));
  EXPECT_EQ(DapId(1, 2, 3), DapId(123));
  EXPECT_EQ(DapId(1, 2, 3, 'C'), DapId(123, 'C'));

  for (const DapId& other :
       {DapId(1, 2, 3, 'C'), DapId(server110, 0, 2, 3, 'C'), DapId(server110, 1, 0, 3, 'C'),
        DapId(server110, 1, 2, 0, 'C'), DapId(server110, 1, 2, 3)}) {
    EXPECT_NE(other, whole) << other.ToString();
  }
}

TEST(DapIdTest, NumbersThatABByteCannotHoldAreRefused) {
  for (const int value : {-1, 256, 257, 65536, -2147483647 - 1}) {
    const std::string number = std::to_string(value);
    EXPECT_THAT([&] { DapId(value, 1, 1); },
                ThrowsMessage<std::invalid_argument>(HasSubstr("Page " + number)));
    EXPECT_THAT([&] { DapId(1, value, 1); },
                ThrowsMessage<std::invalid_argument>(HasSubstr("Bank " + number)));
    EXPECT_THAT([&] { DapId(1, 1, value); },
                ThrowsMessage<std::invalid_argument>(HasSubstr("Row " + number)));
  }
  for (const int position : {-1, 1000}) {
    EXPECT_THAT([&] { DapId id(position); },
                ThrowsMessage<std::invalid_argument>(HasSubstr("Position " + std::to_string(position))));
  }
}

TEST(DapIdTest, LimitsOfTheGrid) {
  struct Case {
    int number;
    bool page, bank, row;
  };
  for (const Case& c : std::vector<Case>{{-1, false, false, false},
                                         {0, true, false, true},
                                         {1, true, true, true},
                                         {9, true, true, true},
                                         {10, false, false, false},
                                         {255, false, false, false},
                                         {256, false, false, false}}) {
    EXPECT_EQ(DapId::IsValidPage(c.number), c.page) << c.number;
    EXPECT_EQ(DapId::IsValidBank(c.number), c.bank) << c.number;
    EXPECT_EQ(DapId::IsValidRow(c.number), c.row) << c.number;
    if (c.number < 0 || c.number > 255) continue;
    EXPECT_EQ(DapId(c.number, 1, 1).IsValid(), c.page) << c.number;
    EXPECT_EQ(DapId(1, c.number, 1).IsValid(), c.bank) << c.number;
    EXPECT_EQ(DapId(1, 1, c.number).IsValid(), c.row) << c.number;
  }

  int validCameras = 0;
  for (int byte = -128; byte < 128; ++byte) {
    const char camera = static_cast<char>(byte);
    const DapId id(1, 1, 1, camera);
    const bool isLetter = std::string("ABCDEFGHIJKL").find(camera) != std::string::npos;
    validCameras += isLetter ? 1 : 0;
    EXPECT_EQ(DapId::IsValidCamera(camera), isLetter) << byte;
    EXPECT_EQ(id.IsValid(), isLetter || byte == 0) << byte;
    EXPECT_EQ(id.HasCamera(), byte != 0) << byte;
    EXPECT_EQ(id.Camera(), camera);
    EXPECT_EQ(id.Channel(), isLetter ? validCameras : 0) << byte;
  }
  EXPECT_EQ(validCameras, DapId::MaxChannel);
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
  struct Case {
    DapId id;
    std::string shortText, text, uri;
  };
  const std::vector<Case> cases{
      {DapId(server110, 1, 1, 1, 'A'), "111A", "110/111A", "dap://110/1/1/1/A"},
      {DapId(0, 9, 3), "093", "0/093", "dap://0/0/9/3"},
      {DapId(), "---", "0/---", "dap://0/-/-/-"},
      {DapId(12, 1, 255, '!'), "(12)1-(33)", "0/(12)1-(33)", "dap://0/12/1/-/33"},
      {DapId(server110, 1, 2, 3, 'Z'), "123Z", "110/123Z", "dap://110/1/2/3/Z"},
      {DapId(254, 10, 0, '\xff'), "(254)(10)0(255)", "0/(254)(10)0(255)", "dap://0/254/10/0/255"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.id.ToShortString(), c.shortText);
    EXPECT_EQ(c.id.ToString(), c.text);
    EXPECT_EQ(c.id.ToUri(), c.uri);
  }
}

TEST(DapIdTest, EveryIdReadsBackAndNoTwoShareAText) {
  const std::vector<int> numbers{0, 1, 9, 10, 99, 254, 255};
  const std::vector<char> cameras{0,   1,   '!', '(', '-', '/',    '0',    '9',
                                  'A', 'L', 'M', 'Z', 'a', '\x7f', '\x80', '\xff'};
  std::set<std::string> texts;
  std::size_t count = 0;
  for (const ZuServerId& server : {ZuServerId(), server110, ZuServerId(2147483640)}) {
    for (const int page : numbers) {
      for (const int bank : numbers) {
        for (const int row : numbers) {
          for (const char camera : cameras) {
            const DapId id(server, page, bank, row, camera);
            ASSERT_EQ(DapId(id.ToString()), id) << id.ToString();
            ASSERT_EQ(DapId::FromUri(id.ToUri()), id) << id.ToUri();
            ASSERT_EQ(DapId(id.ToShortString()), DapId(page, bank, row, camera)) << id.ToShortString();
            texts.insert(id.ToString());
            texts.insert(id.ToUri());
            count += 2;
          }
        }
      }
    }
  }
  EXPECT_EQ(texts.size(), count);
}

TEST(DapIdTest, APrefixIsReadAsFarAsItGoes) {
  struct Case {
    std::string text;
    DapId id;
    int consumed;
  };
  const std::vector<Case> cases{
      {"111A", DapId(1, 1, 1, 'A'), 4},
      {"111A rest", DapId(1, 1, 1, 'A'), 4},
      {"111 A", DapId(1, 1, 1), 3},
      {"111AB", DapId(1, 1, 1, 'A'), 4},
      {"1112", DapId(1, 1, 1), 3},
      {"111a", DapId(1, 1, 1), 3},
      {"111(", DapId(1, 1, 1), 3},
      {"111(0)", DapId(1, 1, 1), 3},
      {"111(65)", DapId(1, 1, 1), 3},
      {"111(033)", DapId(1, 1, 1), 3},
      {"111(256)", DapId(1, 1, 1), 3},
      {"----", DapId(), 3},
      {"110/111A,110/112A", DapId(server110, 1, 1, 1, 'A'), 8},
      {"110/x", DapId(1, 1, 0), 3},
      {"110/", DapId(1, 1, 0), 3},
      {"115/111", DapId(1, 1, 5), 3},
  };
  for (const Case& c : cases) {
    DapId id(9, 9, 9);
    int consumed = -1;
    EXPECT_TRUE(DapId::TryParse(c.text, id, consumed)) << c.text;
    EXPECT_EQ(id, c.id) << c.text;
    EXPECT_EQ(consumed, c.consumed) << c.text;
    const bool isWhole = static_cast<std::size_t>(c.consumed) == c.text.size();
    DapId whole;
    EXPECT_EQ(DapId::TryParse(c.text, whole), isWhole) << c.text;
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
