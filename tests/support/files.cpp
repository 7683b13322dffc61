#include "support/files.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace lumisk::test {

std::string readAll(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  EXPECT_TRUE(in.is_open()) << path;
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void writeAll(const std::filesystem::path& path, std::string_view bytes) {
  std::ofstream out(path, std::ios::binary);
  out << bytes;
  out.close();
  ASSERT_TRUE(out) << path;
}

void makeLargeFolder(const std::filesystem::path& path) {
  constexpr int kEntries = 15'000;
  std::filesystem::create_directory(path);
  writeAll(path / "entry", "");
  for (int i = 1; i < kEntries; ++i)
    std::filesystem::create_hard_link(
        path / "entry", path / ("entry " + std::to_string(i) + " of a long list of names"));
}

void expectFile(const std::filesystem::path& path, std::string_view actual) {
  if (getenv("LUMISK_UPDATE_EXPECTED") != nullptr) {
    writeAll(path, actual);
    ADD_FAILURE() << path << " was rewritten: look at the difference";
    return;
  }
  EXPECT_EQ(std::string(actual), readAll(path)) << path;
}

TemporaryFolder::TemporaryFolder() {
  std::string pattern = std::filesystem::temp_directory_path() / "lumisk-test-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace lumisk::test
