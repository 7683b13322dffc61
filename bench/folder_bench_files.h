#pragma once

#include <filesystem>

namespace lumisk::bench {

/// A temporary folder with the trees that are measured; removed when this goes.
class GeneratedFolders {
 public:
  GeneratedFolders();
  GeneratedFolders(const GeneratedFolders&) = delete;
  GeneratedFolders& operator=(const GeneratedFolders&) = delete;
  ~GeneratedFolders();

  static constexpr int kTreeFolders = 2000;
  static constexpr int kFilesInEach = 100;
  static constexpr int kListedEntries = 100'000;

  /// 200,000 files of up to 8 KiB in 2,000 folders, two levels deep.
  std::filesystem::path tree() const { return path_ / "tree"; }
  /// 100,000 entries with sizes and dates of all kinds and names in words of several lengths.
  std::filesystem::path listed() const { return path_ / "listed"; }
  /// A place for compiled locales.
  std::filesystem::path locales() const { return path_ / "locales"; }

 private:
  std::filesystem::path path_;
};

}  // namespace lumisk::bench
