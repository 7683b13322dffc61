#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "bench/bench_output.h"
#include "bench/builders.h"
#include "bench/json_corpora.h"
#include "bench/rapidjson_peer.h"
#include "bench/ratios.h"
#include "core/json_format.h"
#include "core/json_page.h"

namespace lumisk::bench {

namespace {

constexpr std::size_t kSize = std::size_t{16} << 20;

const FileURL kFile = FileURL::fromPath("/home/someone/data/records.json");

std::size_t formattedSize(std::string_view text) {
  StreamedOutput out;
  if (!appendFormattedJson(out, text)) std::abort();
  out.flush();
  return out.size();
}

/// Laying out and escaping `corpus`, all of the output in warm memory: so has RapidJSON its own.
Work formatting(std::string (*corpus)(std::size_t)) {
  const auto text = std::make_shared<std::string>(corpus(kSize));
  const auto out = std::make_shared<WarmOutput>(formattedSize(*text));
  const auto copy = std::make_shared<std::string>(*text);
  return {text->size(),
          [text, out] {
            out->restart();
            if (!appendFormattedJson(*out, *text)) std::abort();
          },
          {{"RapidJSON", rapidJson(*text), Target::atLeastFaster(3)},
           {"RapidJSON with SSE2", rapidJsonSse2(*text)},
           {"memcpy of the input",
            [text, copy] { std::memcpy(copy->data(), text->data(), text->size()); }}}};
}

const RatioWork kText("JSON, long strings", [] { return formatting(textJson); });
const RatioWork kNumbers("JSON, numbers", [] { return formatting(numberJson); });
const RatioWork kPrecise("JSON, doubles in full precision",
                         [] { return formatting(preciseNumberJson); });
const RatioWork kDeep("JSON, deep", [] { return formatting(deepJson); });
const RatioWork kIndented("JSON, laid out before", [] { return formatting(indentedJson); });
const RatioWork kRecords("JSON, records", [] { return formatting(recordJson); });

const RatioWork kLines("JSON Lines page", [] {
  const auto lines = std::make_shared<std::string>(recordLines(kSize));
  const auto array = std::make_shared<std::string>(recordJson(kSize));
  return Work{lines->size(),
              [lines] {
                StreamedOutput out;
                writeJSONLHTML(out, *lines, kFile, false, true);
              },
              {{"page of the same records as one array",
                [array] {
                  StreamedOutput out;
                  writeJSONHTML(out, *array, kFile, false, true);
                },
                Target::atMostTimes(1.3)},
               {"formatting alone of that array", [array] {
                  StreamedOutput out;
                  if (!appendFormattedJson(out, *array)) std::abort();
                }}}};
});

Builder jsonBuilder(const char* name, bool formatted) {
  return {
      name, recordJson,
      [formatted](Output& out, std::string_view text) {
        writeJSONHTML(out, text, kFile, false, formatted);
      },
      [formatted](std::string_view text) { return buildJSONHTML(text, kFile, false, formatted); }};
}

Builder linesBuilder(const char* name, bool formatted) {
  return {
      name, recordLines,
      [formatted](Output& out, std::string_view text) {
        writeJSONLHTML(out, text, kFile, false, formatted);
      },
      [formatted](std::string_view text) { return buildJSONLHTML(text, kFile, false, formatted); }};
}

const RegisteredBuilder kJson(jsonBuilder("JSON, formatted", true));
const RegisteredBuilder kJsonText(jsonBuilder("JSON, as text", false));
const RegisteredBuilder kJsonLines(linesBuilder("JSON Lines, formatted", true));
const RegisteredBuilder kJsonLinesText(linesBuilder("JSON Lines, as text", false));

}  // namespace

}  // namespace lumisk::bench
