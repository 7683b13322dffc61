#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <string>

#include "bench/bench_output.h"
#include "bench/builders.h"
#include "bench/corpora.h"
#include "bench/ratios.h"
#include "core/table_page.h"

namespace lumisk::bench {

namespace {

constexpr std::size_t kSize = std::size_t{64} << 20;

const FileURL kFile = FileURL::fromPath("/home/someone/data/prices.csv");

/// The rows in one pass over the text, a character at a time, into a string that is large enough.
/// It leaves out what a whole builder must do besides: blank lines.
class PushBackPass {
 public:
  explicit PushBackPass(std::size_t size) { page_.resize(size); }

  void run(std::string_view text) {
    page_.clear();
    tag_ = "th";
    openRow();
    for (const char character : text) take(character);
    benchmark::DoNotOptimize(page_.data());
  }

 private:
  void take(char character) {
    switch (character) {
      case ',':
        closeCell();
        openCell();
        break;
      case '\n':
        closeCell();
        page_.append("</tr>");
        tag_ = "td";
        openRow();
        break;
      case '<':
        page_.append("&lt;");
        break;
      case '>':
        page_.append("&gt;");
        break;
      case '"':
      case '\r':
        if (page_.size() > cellStart_) page_.push_back(character);
        break;
      default:
        page_.push_back(character);
    }
  }

  void openRow() {
    page_.append("<tr>");
    openCell();
  }
  void openCell() {
    page_.append("<").append(tag_).append(">");
    cellStart_ = page_.size();
  }
  void closeCell() {
    while (page_.size() > cellStart_ && (page_.back() == '"' || page_.back() == '\r')) {
      page_.pop_back();
    }
    page_.append("</").append(tag_).append(">");
  }

  std::string page_;
  const char* tag_ = "th";
  std::size_t cellStart_ = 0;
};

Work tableWork(std::string corpus, bool hasTargets) {
  const auto text = std::make_shared<const std::string>(std::move(corpus));
  const auto page = std::make_shared<const std::string>(buildTableHTML(*text, kFile, ",", false));
  const auto out = std::make_shared<WarmOutput>(page->size());
  const auto other = std::make_shared<WarmOutput>(page->size());
  const auto pushBack = std::make_shared<PushBackPass>(page->size());
  return {text->size(),
          [=] {
            out->restart();
            writeTableHTML(*out, *text, kFile, ",", false);
          },
          {{"memcpy of the output",
            [=] {
              std::memcpy(other->memory(), page->data(), page->size());
              benchmark::ClobberMemory();
            },
            hasTargets ? Target::atMostTimes(2.2) : Target{}},
           {"one pass with push_back, warm memory", [=] { pushBack->run(*text); },
            hasTargets ? Target::atLeastFaster(8) : Target{}},
           {"lumisk through one window",
            [=] {
              StreamedOutput streamed;
              writeTableHTML(streamed, *text, kFile, ",", false);
              benchmark::DoNotOptimize(streamed.size());
            }},
           {"lumisk into a new string",
            [=] { benchmark::DoNotOptimize(buildTableHTML(*text, kFile, ",", false).data()); }}}};
}

const RatioWork kPlain("table, 10 columns",
                       [] { return tableWork(csvText(kSize, CellQuotes::None), true); });
const RatioWork kSomeQuotes("table, 10 columns, two of them quoted",
                            [] { return tableWork(csvText(kSize, CellQuotes::Some), false); });
const RatioWork kAllQuotes("table, 10 quoted columns",
                           [] { return tableWork(csvText(kSize, CellQuotes::All), false); });

const RegisteredBuilder kTableBuilder(
    {"table", [](std::size_t size) { return csvText(size, CellQuotes::None); },
     [](Output& out, std::string_view text) { writeTableHTML(out, text, kFile, ",", false); },
     [](std::string_view text) { return buildTableHTML(text, kFile, ",", false); }});

}  // namespace

}  // namespace lumisk::bench
