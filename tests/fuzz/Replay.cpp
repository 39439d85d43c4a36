// Runs a fuzzer without libFuzzer, in the ordinary test build: each seed of a folder, then a number of inputs that are
// seeds with random changes, the same ones each time. The input under way is left in a file until it has passed.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size);

namespace {

class Replay {
 public:
  explicit Replay(const std::string& folder) {
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      std::ifstream file(entry.path(), std::ios::binary);
      mSeeds.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    if (mSeeds.empty()) throw std::runtime_error("no seeds in " + folder);
  }

  void Run(int changedCount) {
    for (const std::string& seed : mSeeds)
      Try(seed);
    for (int i = 0; i < changedCount; ++i)
      Try(Changed());
    std::filesystem::remove("fuzz-input");
    std::cout << mSeeds.size() << " seeds and " << changedCount << " inputs made of them passed\n";
  }

 private:
  static void Try(const std::string& input) {
    std::ofstream("fuzz-input", std::ios::binary) << input;
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(input.data()), input.size());
  }

  std::size_t Below(std::size_t end) { return static_cast<std::size_t>(mRandom() % end); }

  std::string Changed() {
    std::string input = mSeeds[Below(mSeeds.size())];
    for (auto changes = 1 + Below(6); changes > 0; --changes) {
      const std::size_t place = Below(input.size() + 1), kind = Below(4);
      if (kind == 0) {
        input.insert(place, 1, static_cast<char>(mRandom()));
      } else if (kind == 1) {
        input.erase(place, 1 + Below(4));
      } else if (kind == 2 && place < input.size()) {
        input[place] = static_cast<char>(mRandom());
      } else {
        const std::string& other = mSeeds[Below(mSeeds.size())];
        const std::size_t from = Below(other.size() + 1);
        input.insert(place, other, from, 1 + Below(16));
      }
    }
    return input;
  }

  std::mt19937_64 mRandom{20261125};
  std::vector<std::string> mSeeds;
};

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) {
    std::cerr << "Usage: " << arguments[0] << " FOLDER-OF-SEEDS NUMBER-OF-CHANGED-INPUTS\n";
    return 2;
  }
  Replay(arguments[1]).Run(std::atoi(arguments[2]));
}
