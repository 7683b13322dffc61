// process_bench LUMISK: measures the command as whole processes, started in turn with their peers.
//
//   - a 1 KB file beside cat: what starting the command costs
//   - a JSON file beside jq: what a person would use instead
//   - memory of each kind of page for a large file, as the kernel counts it
//   - time of each kind from 1 KB to 256 MB: linear, or not
//
// Prints Markdown tables. Files are made in a temporary folder, which goes at the end.

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

extern char** environ;  // NOLINT(readability-redundant-declaration): POSIX declares it nowhere

namespace {

using Words = std::vector<std::string>;

struct Run {
  double seconds = 0;
  long peakKilobytes = 0;
};

Run run(const Words& words) {
  std::vector<char*> argv;
  for (const std::string& word : words) argv.push_back(const_cast<char*>(word.c_str()));
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  const auto start = std::chrono::steady_clock::now();
  if (posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ) != 0) {
    std::fprintf(stderr, "cannot start %s\n", argv[0]);
    std::exit(1);
  }
  int status = 0;
  rusage usage = {};
  wait4(child, &status, 0, &usage);
  const auto end = std::chrono::steady_clock::now();
  posix_spawn_file_actions_destroy(&actions);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    std::fprintf(stderr, "%s failed\n", argv[0]);
    std::exit(1);
  }
  return {std::chrono::duration<double>(end - start).count(), usage.ru_maxrss};
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

// The medians of both, started in turn so that a change of the machine's speed meets both.
std::pair<double, double> interleaved(const Words& ours, const Words& peers, int rounds) {
  std::vector<double> our;
  std::vector<double> peer;
  run(ours);
  run(peers);
  for (int round = 0; round < rounds; ++round) {
    our.push_back(run(ours).seconds);
    peer.push_back(run(peers).seconds);
  }
  return {median(our), median(peer)};
}

using Line = std::function<std::string(std::size_t number)>;

struct Corpus {
  const char* name;
  const char* extension;
  const char* opening;
  Line line;
  const char* closing;
  std::vector<std::string> options = {};
};

std::string sourceLine(std::size_t number) {
  return "  if (value[" + std::to_string(number) + "] < limit && !done) sum += value->next;\n";
}
std::string proseLine(std::size_t number) {
  return "Paragraph " + std::to_string(number) + " with *emphasis*, `code` and [a link](x.md).\n\n";
}
std::string tableLine(std::size_t number) {
  const std::string n = std::to_string(number);
  return n + ",\"name " + n + "\",Oslo,3.25," + n + ",true,,\"a b\",12,last\n";
}
std::string jsonRecord(std::size_t number) {
  const std::string n = std::to_string(number);
  return "{\"id\":" + n + ",\"name\":\"Name of <" + n +
         ">\",\"tags\":[\"a\",\"b & c\"],\"score\":" + std::to_string(number % 1000) +
         ".25,\"nested\":{\"ok\":true,\"none\":null}}";
}

const std::vector<Corpus>& corpora() {
  static const std::vector<Corpus> kCorpora = {
      {"source", "cpp", "", sourceLine, ""},
      {"Markdown", "md", "", proseLine, ""},
      {"CSV", "csv", "", tableLine, ""},
      {"JSON, formatted", "json", "[{\"id\":0}",
       [](std::size_t number) { return ",\n" + jsonRecord(number); }, "]"},
      {"JSON, as text",
       "json",
       "[{\"id\":0}",
       [](std::size_t number) { return ",\n" + jsonRecord(number); },
       "]",
       {"--mode=text"}},
      {"JSON Lines, formatted",
       "jsonl",
       "",
       [](std::size_t number) { return jsonRecord(number) + "\n"; },
       "",
       {"--mode=formatted"}},
  };
  return kCorpora;
}

class Folder {
 public:
  Folder() {
    std::string pattern = std::filesystem::temp_directory_path() / "lumisk-bench-XXXXXX";
    path_ = mkdtemp(pattern.data());
  }
  ~Folder() { std::filesystem::remove_all(path_); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::string file(const Corpus& corpus, std::size_t size) const {
    const std::string path = path_ / (std::string("file.") + corpus.extension);
    std::ofstream out(path, std::ios::binary);
    std::string block = corpus.opening;
    std::size_t written = 0;
    for (std::size_t number = 1; written + block.size() < size; ++number) {
      block += corpus.line(number);
      if (block.size() < 1'000'000) continue;
      out << block;
      written += block.size();
      block.clear();
    }
    out << block << corpus.closing;
    return path;
  }

 private:
  std::filesystem::path path_;
};

Words pageOf(const std::string& lumisk, const Corpus& corpus, const std::string& path) {
  Words words = {lumisk, "page"};
  words.insert(words.end(), corpus.options.begin(), corpus.options.end());
  words.push_back(path);
  return words;
}

constexpr std::size_t kMegabyte = std::size_t{1024} * 1024;

void compareWithPeers(const std::string& lumisk, const Folder& folder) {
  std::puts("| process | Lumisk | peer | ratio |\n| --- | --- | --- | --- |");
  const std::string small = folder.file(corpora()[0], 1024);
  const auto [page, cat] = interleaved({lumisk, "page", small}, {"cat", small}, 501);
  std::printf("| page of 1 KB, beside cat | %.2f ms | %.2f ms | %.2f x its time |\n", page * 1e3,
              cat * 1e3, page / cat);
  const std::string json = folder.file(corpora()[3], 64 * kMegabyte);
  const auto [formatted, jq] = interleaved({lumisk, "page", json}, {"jq", ".", json}, 5);
  std::printf("| page of 64 MB of JSON, beside jq . | %.0f ms | %.0f ms | %.0f x as fast |\n",
              formatted * 1e3, jq * 1e3, jq / formatted);
}

void measureMemory(const std::string& lumisk, const Folder& folder) {
  std::puts("\n| page of 200 MB | file | peak memory | over the file |\n| --- | --- | --- | --- |");
  for (const Corpus& corpus : corpora()) {
    const std::string path = folder.file(corpus, 200 * kMegabyte);
    const double file = static_cast<double>(std::filesystem::file_size(path)) / kMegabyte;
    const double peak = static_cast<double>(run(pageOf(lumisk, corpus, path)).peakKilobytes) / 1024;
    std::printf("| %s | %.1f MB | %.1f MB | %.1f MB |\n", corpus.name, file, peak, peak - file);
  }
}

void measureGrowth(const std::string& lumisk, const Folder& folder) {
  std::puts("\n| milliseconds | 1 KB | 64 KB | 1 MB | 16 MB | 64 MB | 256 MB |");
  std::puts("| --- | --- | --- | --- | --- | --- | --- |");
  for (const Corpus& corpus : corpora()) {
    std::printf("| %s |", corpus.name);
    for (const std::size_t size : {std::size_t{1024}, 64 * std::size_t{1024}, kMegabyte,
                                   16 * kMegabyte, 64 * kMegabyte, 256 * kMegabyte}) {
      const Words words = pageOf(lumisk, corpus, folder.file(corpus, size));
      std::vector<double> seconds;
      for (int round = 0; round < 5; ++round) seconds.push_back(run(words).seconds);
      std::printf(" %.1f |", median(seconds) * 1e3);
    }
    std::puts("");
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: process_bench LUMISK\n", stderr);
    return 2;
  }
  const std::string lumisk = argv[1];
  const Folder folder;
  compareWithPeers(lumisk, folder);
  measureMemory(lumisk, folder);
  measureGrowth(lumisk, folder);
  return 0;
}
