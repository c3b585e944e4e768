// Runs a fuzz target on each file of the folders given as arguments: the seed corpus becomes a test that any
// compiler can build.

#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

#include "FuzzSupport.h"

namespace {

std::vector<std::uint8_t> bytesOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

int main(int argc, char* argv[]) {
  int count = 0;
  for (int k = 1; k < argc; ++k) {
    for (const auto& entry : std::filesystem::directory_iterator(argv[k])) {
      if (!entry.is_regular_file()) continue;
      std::cout << entry.path().filename().string() << std::endl;  // the last name shows what crashed
      const std::vector<std::uint8_t> bytes = bytesOf(entry.path());
      LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
      ++count;
    }
  }
  std::cout << count << " inputs\n";
  return count > 0 ? 0 : 1;
}
