// A target as a plain test: executes it on every file of a corpus, in the order of their names, and
// on nothing at all. The last name that it prints is that of the file on which it fails.

#include <filesystem>
#include <set>
#include <vector>

#include "fuzz/target.h"
#include "support/files/whole_file.h"

int main(int argc, char** argv) {
  constexpr std::size_t longestFile = std::size_t{1} << 20U;
  if (argc != 2) {
    std::fprintf(stderr, "expected the folder of a corpus\n");
    return EXIT_FAILURE;
  }
  std::set<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(argv[1]))
    files.insert(entry.path());
  if (files.empty()) {
    std::fprintf(stderr, "%s: expected a corpus, found an empty folder\n", argv[1]);
    return EXIT_FAILURE;
  }
  for (const auto& file : files) {
    std::printf("%s\n", file.filename().string().c_str());
    std::fflush(stdout);
    const auto content = touch::readWholeFile(file, longestFile);
    if (!content) {
      std::fprintf(stderr, "%s\n", content.error().describe().c_str());
      return EXIT_FAILURE;
    }
    touch::fuzz::execute(
        {reinterpret_cast<const std::uint8_t*>(content.value().data()), content.value().size()});
  }
  std::printf("nothing at all\n");
  std::fflush(stdout);
  touch::fuzz::execute({});
  return EXIT_SUCCESS;
}
