// Runs a fuzzer without libFuzzer, in the ordinary test build: each seed of a folder, then a number of inputs that are
// seeds with random changes, the same ones each time. The input under way is left in a file until it has passed.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size);

namespace {

void Try(const std::string& input) {
  std::ofstream("fuzz-input", std::ios::binary) << input;
  LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(input.data()), input.size());
}

// One of the seeds with random changes.
std::string Changed(const std::vector<std::string>& seeds, std::mt19937_64& random) {
  const auto below = [&random](std::size_t end) { return static_cast<std::size_t>(random() % end); };
  std::string input = seeds[below(seeds.size())];
  for (auto changes = 1 + below(6); changes > 0; --changes) {
    const std::size_t place = below(input.size() + 1), kind = below(4);
    if (kind == 0) {
      input.insert(place, 1, static_cast<char>(random()));
    } else if (kind == 1) {
      input.erase(place, 1 + below(4));
    } else if (kind == 2 && place < input.size()) {
      input[place] = static_cast<char>(random());
    } else {
      const std::string& other = seeds[below(seeds.size())];
      const std::size_t from = below(other.size() + 1);
      input.insert(place, other, from, 1 + below(16));
    }
  }
  return input;
}

}  // namespace

int main(int count, char** arguments) {
  std::vector<std::string> seeds;
  if (count == 3) {
    for (const auto& entry : std::filesystem::directory_iterator(arguments[1])) {
      std::ifstream file(entry.path(), std::ios::binary);
      seeds.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
  }
  if (seeds.empty()) {
    std::cerr << "Usage: " << arguments[0] << " FOLDER-OF-SEEDS NUMBER-OF-CHANGED-INPUTS\n";
    return 2;
  }
  std::mt19937_64 random{20261125};
  const int changedCount = std::atoi(arguments[2]);
  for (const std::string& seed : seeds)
    Try(seed);
  for (int i = 0; i < changedCount; ++i)
    Try(Changed(seeds, random));
  std::filesystem::remove("fuzz-input");
  std::cout << seeds.size() << " seeds and " << changedCount << " inputs made of them passed\n";
}
