#include "bench/corpora.h"

#include <array>
#include <string_view>

namespace lumisk::bench {

namespace {

constexpr std::string_view kWords[] = {
    "value",         "index",       "result",  "buffer", "count",  "length",    "name",
    "node",          "first",       "second",  "table",  "entry",  "offset",    "window",
    "cursor",        "output",      "input",   "state",  "parent", "child",     "source",
    "target",        "width",       "height",  "column", "a",      "i",         "context",
    "configuration", "description", "isEmpty", "x",      "left",   "remaining", "line"};

// '$' stands for a word.
constexpr std::string_view kSourceLines[] = {
    "  if ($.$() == 0) return $;\n",
    "  for (std::size_t i = 0; i < $.size(); ++i) {\n",
    "    $ += $($, $[i]) * 2;\n",
    "  }\n",
    "\n",
    "// The $ of each $ is kept with its $, because the $ may change while it is read.\n",
    "  const auto& $ = $.at($);\n",
    "std::vector<$> $($& $, int $) {\n",
    "}\n",
    "  while ($ != nullptr && $->$ > $) $ = $->$;\n",
    "#include \"$/$.h\"\n",
    "  static constexpr int k$ = 1024;  // $ $\n",
    "      throw std::invalid_argument(\"$ has no $\");\n",
    "  $.$ = $;\n",
    "  $.$($, \"$\", $ + 1);\n",
    "  return $;\n",
    "  /// Gives the $ of this $, or an empty $ when there is none.\n",
    "  $ = $ ? $ : $->$($);\n",
    "  int $ = 0;\n",
    "  switch ($) {\n",
    "    case $: $($); break;\n",
    "  explicit $($ $) : $_(std::move($)), $_($) {}\n",
};

constexpr std::string_view kMarkupLines[] = {
    "  <tr><td>$</td><td class=\"$\">$ &amp; $</td></tr>\n",
    "<li><a href=\"$/$.html\">$</a> <b>$</b></li>\n",
    "    <item id=\"$\"><$>$</$></item>\n",
    "<p>$ $ <i>$</i> $ $, $ &lt; $.</p>\n",
    "  <div><span>$</span><br/><em>$</em></div>\n",
};

constexpr std::string_view kPhrases[] = {
    "Grüße aus München, schöne Straße. ",
    "L'été dernier, où étiez-vous? ",
    "Zażółć gęślą jaźń. ",
    "Καλημέρα κόσμε, πώς είστε; ",
    "Съешь же ещё этих мягких булок. ",
    "السلام عليكم ورحمة الله. ",
    "नमस्ते दुनिया, आप कैसे हैं? ",
    "我能吞下玻璃而不伤身体。",
    "いろはにほへと ちりぬるを。",
    "Plain words in between, ",
    "🎉🚀 👩‍💻 ",
    "naïve café №42 — “quoted” … ",
    "\n",
};

/// `line` with a word for each '$'.
void appendFilled(std::string& text, std::string_view line, Picker& picker) {
  for (const char character : line) {
    if (character == '$') {
      text += picker.from(kWords);
    } else {
      text += character;
    }
  }
}

template <typename Lines>
std::string filledLines(std::size_t size, const Lines& lines, unsigned seed) {
  Picker picker(seed);
  std::string text;
  text.reserve(size + 1024);
  while (text.size() < size) appendFilled(text, picker.from(lines), picker);
  return text;
}

constexpr std::string_view kProse[] = {
    "The $ of the $ is $, and its $ grows with every $ that is added.\n",
    "A $ $ holds no more than one $; see the $ for a longer $.\n",
    "\n",
    "  * $: the $, the $ and the $ (not the $)\n",
};

// '#' stands for a number; the columns in quotes are those that `CellQuotes::Some` quotes.
constexpr std::array<std::string_view, 10> kColumns = {
    "#", "$", "$ $", "#.#", "2024-05-#", "$@$.org", "$ $ $", "#", "true", "$"};
constexpr std::array<bool, 10> kIsOftenQuoted = {false, false, true,  false, false,
                                                 false, true,  false, false, false};

void appendCell(std::string& text, std::string_view form, Picker& picker) {
  for (const char character : form) {
    if (character == '#') {
      text += std::to_string(picker.below(picker.below(2) == 0 ? 100 : 1000000));
    } else {
      appendFilled(text, {&character, 1}, picker);
    }
  }
}

void appendCsvLine(std::string& text, CellQuotes quotes, Picker& picker) {
  for (std::size_t column = 0; column < kColumns.size(); ++column) {
    const bool isQuoted =
        quotes == CellQuotes::All || (quotes == CellQuotes::Some && kIsOftenQuoted[column]);
    if (column > 0) text += ',';
    if (isQuoted) text += '"';
    appendCell(text, kColumns[column], picker);
    if (isQuoted) text += '"';
  }
  text += '\n';
}

}  // namespace

std::string sourceText(std::size_t size) { return filledLines(size, kSourceLines, 1); }

std::string markupText(std::size_t size) { return filledLines(size, kMarkupLines, 2); }

std::string asciiText(std::size_t size) { return filledLines(size, kProse, 3); }

std::string mixedScripts(std::size_t size) {
  Picker picker(4);
  std::string text;
  text.reserve(size + 1024);
  while (text.size() < size) text += picker.from(kPhrases);
  return text + "\n";
}

std::string csvText(std::size_t size, CellQuotes quotes) {
  Picker picker(5);
  std::string text;
  text.reserve(size + 1024);
  while (text.size() < size) appendCsvLine(text, quotes, picker);
  return text;
}

}  // namespace lumisk::bench
