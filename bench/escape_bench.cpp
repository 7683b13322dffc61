#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <string>

#include "bench/bench_output.h"
#include "bench/builders.h"
#include "bench/corpora.h"
#include "bench/ratios.h"
#include "core/escape.h"
#include "core/source_page.h"

namespace lumisk::bench {

namespace {

constexpr std::size_t kSize = std::size_t{64} << 20;

/// `text` with every `from` replaced, as a string of its own.
std::string replaced(std::string_view text, char from, std::string_view to) {
  std::string result;
  result.reserve(text.size() + text.size() / 8);
  std::size_t at = 0;
  for (std::size_t found; (found = text.find(from, at)) != text.npos; at = found + 1) {
    result.append(text, at, found - at).append(to);
  }
  return result.append(text, at);
}

void replaceThreeTimes(std::string_view text) {
  const std::string page =
      replaced(replaced(replaced(text, '&', "&amp;"), '<', "&lt;"), '>', "&gt;");
  benchmark::DoNotOptimize(page.data());
}

/// The same into strings whose memory is there already.
struct WarmReplacing {
  std::string first, second;

  static void replace(std::string_view text, char from, std::string_view to, std::string& result) {
    result.clear();
    std::size_t at = 0;
    for (std::size_t found; (found = text.find(from, at)) != text.npos; at = found + 1) {
      result.append(text, at, found - at).append(to);
    }
    result.append(text, at);
  }

  void run(std::string_view text) {
    replace(text, '&', "&amp;", first);
    replace(first, '<', "&lt;", second);
    replace(second, '>', "&gt;", first);
    benchmark::DoNotOptimize(first.data());
  }
};

/// One pass that looks every byte up in a table.
void escapeByTable(std::string_view text, char* out) {
  static const auto kEntities = [] {
    std::array<std::string_view, 256> entities{};
    entities['&'] = "&amp;";
    entities['<'] = "&lt;";
    entities['>'] = "&gt;";
    return entities;
  }();
  for (const char character : text) {
    const std::string_view entity = kEntities[static_cast<unsigned char>(character)];
    if (entity.empty()) {
      *out++ = character;
    } else {
      out = static_cast<char*>(std::memcpy(out, entity.data(), entity.size())) + entity.size();
    }
  }
  benchmark::DoNotOptimize(out);
}

Work escapeWork(std::string corpus, std::vector<Target> targets) {
  const auto text = std::make_shared<const std::string>(std::move(corpus));
  const auto page = std::make_shared<const std::string>(escaped(*text, Escaping::Html));
  const auto out = std::make_shared<WarmOutput>(page->size());
  const auto other = std::make_shared<WarmOutput>(page->size());
  const auto warm = std::make_shared<WarmReplacing>();
  return {text->size(),
          [=] {
            out->restart();
            appendEscaped(*out, *text, Escaping::Html);
          },
          {{"memcpy of the output",
            [=] {
              std::memcpy(other->memory(), page->data(), page->size());
              benchmark::ClobberMemory();
            },
            targets[0]},
           {"three replacements", [=] { replaceThreeTimes(*text); }, targets[1]},
           {"three replacements, warm memory", [=] { warm->run(*text); }},
           {"table, byte by byte", [=] { escapeByTable(*text, other->memory()); }},
           {"lumisk through one window", [=] {
              StreamedOutput streamed;
              appendEscaped(streamed, *text, Escaping::Html);
              benchmark::DoNotOptimize(streamed.size());
            }}}};
}

const RatioWork kSourceText("escape, source text", [] {
  return escapeWork(sourceText(kSize), {Target::atMostTimes(1.4), Target::atLeastFaster(12)});
});
const RatioWork kMarkup("escape, markup-dense text", [] {
  return escapeWork(markupText(kSize), {{}, Target::atLeastFaster(8)});
});
const RatioWork kMixed("escape, mixed scripts", [] {
  return escapeWork(mixedScripts(kSize), {{}, {}});
});

const FileURL kFile = FileURL::fromPath("/home/someone/project/source.cpp");

const RegisteredBuilder kSourceBuilder(
    {"source", sourceText,
     [](Output& out, std::string_view text) { writeSourceHTML(out, text, kFile, "cpp", false); },
     [](std::string_view text) { return buildSourceHTML(text, kFile, "cpp", false); }});

}  // namespace

}  // namespace lumisk::bench
