#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

/// Longer inputs are replayed whole and at this many evenly spread cuts.
constexpr std::size_t mostCuts = 4096;

std::vector<std::uint8_t> contents(const std::filesystem::path& path) {
  std::ifstream file{path, std::ios::binary};
  return {std::istreambuf_iterator<char>{file}, std::istreambuf_iterator<char>{}};
}

void replay(const std::vector<std::uint8_t>& input) {
  const std::size_t step = input.size() / mostCuts + 1;
  for (std::size_t size = 0; size < input.size(); size += step) {
    // A copy of exactly this size, so that a read past the cut is seen by the address sanitizer.
    const std::vector<std::uint8_t> cut(input.begin(),
                                        input.begin() + static_cast<std::ptrdiff_t>(size));
    LLVMFuzzerTestOneInput(cut.data(), cut.size());
  }
  LLVMFuzzerTestOneInput(input.data(), input.size());
}

}  // namespace

/// Feeds every file of a corpus folder, whole and cut, to the fuzz target that it is linked with.
int main(int argumentCount, char** arguments) {
  if (argumentCount != 2) {
    static_cast<void>(std::fprintf(stderr, "usage: replay <corpus folder>\n"));
    return EXIT_FAILURE;
  }
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator{arguments[1]}) {
    replay(contents(entry.path()));
    ++count;
  }
  static_cast<void>(std::printf("%zu inputs\n", count));
  return count > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
