// Runs a fuzzer through the files of a folder, without libFuzzer: what was found once stays found.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

// NOLINTNEXTLINE(readability-redundant-declaration): the linter sees the fuzzer beside it
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) try {
  std::size_t inputs = 0;
  for (int i = 1; i < argc; ++i) {
    for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
      std::ifstream file(entry.path(), std::ios::binary);
      const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
      if (!file) throw std::ios_base::failure("cannot read " + entry.path().native());
      std::cerr << entry.path().filename().native() << std::endl;  // the last one named is the one that broke
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
      ++inputs;
    }
  }
  std::cerr << inputs << " inputs\n";
  return inputs > 0 ? 0 : 1;
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
