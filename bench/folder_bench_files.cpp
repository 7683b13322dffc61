#include "folder_bench_files.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <random>
#include <string>

namespace lumisk::bench {
namespace {

constexpr std::array kWords = {"report", "Holiday", "draft", "Budget", "final", "photo",
                               "résumé", "Übung",   "notes", "scan",   "The",   "übersicht"};
constexpr std::array kExtensions = {".txt", ".md", ".jpg", ".pdf", ".cpp", ".json", ".tar.gz", ""};

[[noreturn]] void fail(const std::filesystem::path& path) {
  std::perror(path.c_str());
  std::exit(1);
}

int create(const std::filesystem::path& path) {
  const int file = open(path.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644);
  if (file < 0) fail(path);
  return file;
}

void makeTree(const std::filesystem::path& tree, std::mt19937& random) {
  static const std::string kBytes(8192, 'x');
  for (int i = 0; i < GeneratedFolders::kTreeFolders; ++i) {
    const auto folder = tree / std::to_string(i % 50) / ("folder " + std::to_string(i));
    std::filesystem::create_directories(folder);
    for (int j = 0; j < GeneratedFolders::kFilesInEach; ++j) {
      const int file = create(folder / ("file " + std::to_string(j) + ".txt"));
      if (write(file, kBytes.data(), random() % kBytes.size()) < 0) fail(folder);
      close(file);
    }
  }
}

std::string makeName(int number, std::mt19937& random) {
  std::string name = kWords[random() % kWords.size()];
  for (auto words = random() % 3; words > 0; --words) {
    name += ' ';
    name += kWords[random() % kWords.size()];
  }
  return name + ' ' + std::to_string(number) + kExtensions[random() % kExtensions.size()];
}

void makeListed(const std::filesystem::path& folder, std::mt19937& random) {
  std::filesystem::create_directory(folder);
  for (int i = 0; i < GeneratedFolders::kListedEntries; ++i) {
    const auto path = folder / makeName(i, random);
    if (i % 20 == 0) {
      std::filesystem::create_directory(path);
      continue;
    }
    const int file = create(path);
    const off_t size = static_cast<off_t>(random() % 5'000'000) >> (random() % 20);
    const timespec date{.tv_sec = 1'000'000'000 + static_cast<time_t>(random() % 800'000'000),
                        .tv_nsec = 0};
    const std::array dates = {date, date};
    if (ftruncate(file, size) != 0 || futimens(file, dates.data()) != 0) fail(path);
    close(file);
  }
}

}  // namespace

GeneratedFolders::GeneratedFolders() {
  std::string pattern = std::filesystem::temp_directory_path() / "lumisk-bench-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) fail(pattern);
  path_ = pattern;
  std::filesystem::create_directory(locales());
  std::mt19937 random(1);  // the same trees each time
  makeTree(tree(), random);
  makeListed(listed(), random);
}

GeneratedFolders::~GeneratedFolders() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace lumisk::bench
