#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace lumisk::test {

/// The whole file, byte for byte; fails the test when it cannot be read.
std::string readAll(const std::filesystem::path& path);
void writeAll(const std::filesystem::path& path, std::string_view bytes);

/// Makes a folder of so many entries that its list of names alone is long: names of one file.
void makeLargeFolder(const std::filesystem::path& path);

/// Expects `actual` to be the bytes of the expected file `path`. With LUMISK_UPDATE_EXPECTED set in
/// the environment the file is rewritten instead and the test fails, so that a reader looks at the
/// difference; the page of a new behaviour is written by hand first.
void expectFile(const std::filesystem::path& path, std::string_view actual);

/// A new empty folder, removed with all it holds when this goes.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

}  // namespace lumisk::test
