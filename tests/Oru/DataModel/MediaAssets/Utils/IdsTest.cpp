#include "Oru/DataModel/MediaAssets/Utils/DapId.h"

#include "support/Prelude.h"

namespace Oru::DataModel::MediaAssets {
namespace {

template <class Run>
void ExpectRefused(Run run, const std::string& what) {
  EXPECT_THAT(run, testing::ThrowsMessage<std::invalid_argument>(testing::HasSubstr(what)));
}

TEST(DapIdTest, ConstructorsPutEachNumberInItsPlaceOrRefuseIt) {
  const ZuServerId server(110);
  const DapId whole(server, 1, 2, 3, 'C');
  EXPECT_TRUE(DapId(server, 123, 'C') == whole && DapId(server, 1, 2, 3) == DapId(server, 123));
  EXPECT_TRUE(DapId(1, 2, 3) == DapId(123) && DapId(1, 2, 3, 'C') == DapId(123, 'C'));
  EXPECT_TRUE(whole.Row() == whole.Clip() && DapId(ZuServerId(), 255, 255, 255) == DapId::Empty());
  for (const DapId& other : {DapId(1, 2, 3, 'C'), DapId(server, 0, 2, 3, 'C'), DapId(server, 1, 0, 3, 'C'),
                             DapId(server, 1, 2, 0, 'C'), DapId(server, 1, 2, 3)})
    EXPECT_NE(other, whole) << other.ToString();
  for (const int value : {-1, 256, -2147483647 - 1}) {
    ExpectRefused([&] { DapId(value, 1, 1); }, "Page " + std::to_string(value));
    ExpectRefused([&] { DapId(1, value, 1); }, "Bank " + std::to_string(value));
    ExpectRefused([&] { DapId(1, 1, value); }, "Row " + std::to_string(value));
  }
  ExpectRefused([&] { DapId id(-1); }, "Position -1");
  ExpectRefused([&] { DapId id(1000); }, "Position 1000");
}

// Pages and rows 0 to 9 and banks 1 to 9 are on the grid; bank 0 has a position and no index.
TEST(DapIdTest, LimitsPositionsAndIndexesOfTheGrid) {
  int index = 0;
  for (int number = 0; number < 12 * 11 * 11; ++number) {
    const int page = number / 121, bank = number / 11 % 11, row = number % 11;
    const DapId id(page == 11 ? 255 : page, bank, row);
    const bool hasPosition = page < 10 && bank < 10 && row < 10, isOnGrid = hasPosition && bank > 0;
    ASSERT_EQ(id.IsValid(), isOnGrid) << id.ToString();
    ASSERT_EQ(id.Index(), isOnGrid ? index++ : -1) << id.ToString();
    ASSERT_EQ(id.Position(), hasPosition ? 100 * page + 10 * bank + row : -1) << id.ToString();
    ASSERT_TRUE(!hasPosition || DapId(id.Position()) == id) << id.ToString();
  }
  EXPECT_EQ(index, 900);
  for (int number = 0; number < 256; ++number) {
    const DapId id(1, 1, 1, static_cast<char>(number));
    const int channel = number >= 'A' && number <= 'L' ? number - 'A' + 1 : 0;
    EXPECT_TRUE(id.HasCamera() == (number != 0) && id.Channel() == channel) << number;
    EXPECT_EQ(id.IsValid(), channel > 0 || number == 0) << number;
  }
}

// Each identifier has one text, one without its server, and one URI. No other text is read, and of a text that only
// begins with one, the longest is.
TEST(DapIdTest, TheTextsOfIdentifiersAndNoOthersAreRead) {
  const int numbers[] = {0, 1, 9, 10, 99, 254, 255};
  const char cameras[] = {0, 1, '(', '-', '/', '0', '9', 'A', 'L', 'M', 'a', '\x80', '\xff'};
  std::vector<std::string> texts;
  constexpr std::size_t count = std::size_t{3} * 7 * 7 * 7 * 13;
  for (std::size_t choice = 0; choice < count; ++choice) {
    const ZuServerId servers[] = {ZuServerId(), ZuServerId(110), ZuServerId(2147483640)};
    const DapId id(servers[choice % 3], numbers[choice / 3 % 7], numbers[choice / 21 % 7],
                   numbers[choice / 147 % 7], cameras[choice / 1029]);
    ASSERT_EQ(DapId(id.ToString()), id) << id.ToString();
    ASSERT_EQ(DapId::FromUri(id.ToUri()), id) << id.ToUri();
    ASSERT_EQ(DapId(id.ToShortString()), DapId(id.Page(), id.Bank(), id.Row(), id.Camera()));
    texts.insert(texts.end(), {id.ToString(), id.ToUri()});
  }
  EXPECT_EQ(DapId(254, 10, 255, '\xff').ToString() + ", " + DapId(ZuServerId(110), 1, 1, 1, 'A').ToUri(),
            "0/(254)(10)-(255), dap://110/1/1/1/A");
  EXPECT_EQ(std::set<std::string>(texts.begin(), texts.end()).size(), 2 * count);

  const std::string letters = "0123456789-()/+ Aa:";
  std::mt19937_64 random(110);
  for (int round = 0; round < 30000; ++round) {
    std::string text = texts[random() % texts.size()];
    for (auto changes = random() % 3; changes < 3; ++changes) {
      const std::size_t place = random() % (text.size() + 1);
      text.replace(place, random() % 2, random() % 2, letters[random() % letters.size()]);
    }
    const std::string number = text.substr(0, text.find('/'));
    ZuServerId server(70);
    const bool isServer = ZuServerId::TryParse(number, server);
    ASSERT_EQ(server.ToString(), isServer ? number : "70") << text;
    ASSERT_TRUE(ZuServerId::IsValid(server.SerialNumber())) << text;
    std::size_t longest = 0;
    for (std::size_t length = 0; length <= text.size(); ++length) {
      const std::string part = text.substr(0, length);
      DapId id;
      if (!DapId::TryParse(part, id)) continue;
      ASSERT_EQ(part, part.find('/') == std::string::npos ? id.ToShortString() : id.ToString());
      longest = length;
    }
    DapId first(9, 9, 9, 'D');
    int consumed = -1;
    ASSERT_EQ(DapId::TryParse(text, first, consumed), longest > 0) << text;
    ASSERT_EQ(static_cast<std::size_t>(consumed), longest) << text;
    ASSERT_EQ(first, longest > 0 ? DapId(text.substr(0, longest)) : DapId(9, 9, 9, 'D')) << text;
    if (longest < text.size()) ExpectRefused([&] { DapId refused(text); }, "\"" + text + "\"");
    try {
      ASSERT_EQ(DapId::FromUri(text).ToUri(), text);
    } catch (const std::invalid_argument& refusal) {
      ASSERT_THAT(refusal.what(), testing::HasSubstr("\"" + text + "\""));
    }
  }
}

TEST(ZuServerIdTest, ValidNumbersAreTheMultiplesOfTenAboveZeroAndReadBack) {
  for (const int valid : {10, 110, 2147483640})
    EXPECT_EQ(ZuServerId::FromUri("zuserver://" + std::to_string(valid)), ZuServerId(std::to_string(valid)));
  EXPECT_EQ(ZuServerId("110").ToUri(), "zuserver://110");
  for (const int invalid : {0, -10, 15, 2147483647, -2147483647 - 1}) {
    EXPECT_FALSE(ZuServerId::IsValid(invalid)) << invalid;
    ExpectRefused([&] { ZuServerId id(invalid); },
                  "Invalid server serial number " + std::to_string(invalid) + ".");
  }
  for (const std::string uri :
       {"110", "zuserver:110", "ZUSERVER://110", "zuserver://110/", "zuserver://2147483650"})
    ExpectRefused([&] { ZuServerId::FromUri(uri); }, "\"" + uri + "\"");
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
