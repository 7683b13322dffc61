#include "core/table_page.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/code_page.h"
#include "core/kernels/kernel_set.h"
#include "core/table_rows.h"
#include "core/whitespace.h"
#include "support/exact_memory.h"
#include "support/exact_output.h"
#include "support/generated_text.h"

namespace lumisk {
namespace {

std::vector<std::string> split(const std::string& text, std::string_view separator) {
  std::vector<std::string> parts = {""};
  for (std::size_t at = 0; at < text.size();) {
    if (!separator.empty() && text.compare(at, separator.size(), separator) == 0) {
      parts.emplace_back();
      at += separator.size();
    } else {
      parts.back() += text[at++];
    }
  }
  return parts;
}

std::string shownCell(const std::string& cell) {
  const auto isTrimmed = [&cell](std::size_t at) { return cell[at] == '"' || cell[at] == '\r'; };
  std::size_t begin = 0;
  std::size_t end = cell.size();
  while (begin < end && isTrimmed(begin)) ++begin;
  while (begin < end && isTrimmed(end - 1)) --end;
  std::string html;
  for (const char character : cell.substr(begin, end - begin)) {
    if (character == '<') {
      html += "&lt;";
    } else if (character == '>') {
      html += "&gt;";
    } else {
      html += character;
    }
  }
  return html;
}

/// A place where a cell starts: in the text, and in the rows that are written.
struct CellStart {
  std::size_t in;
  std::size_t out;
};

/// The table's rows made the plain way, list by list.
struct NaiveTable {
  NaiveTable(const std::string& content, std::string_view separator) {
    const char* tag = "th";
    std::size_t lineStart = 0;
    for (const std::string& line : split(content, "\n")) {
      if (!trimmedBlanks(line).empty()) {
        rows += "<tr>";
        std::size_t cellStart = lineStart;
        for (const std::string& cell : split(line, separator)) {
          cells.push_back({cellStart, rows.size()});
          rows += std::string("<") + tag + ">" + shownCell(cell) + "</" + tag + ">";
          cellStart += cell.size() + separator.size();
        }
        rows += "</tr>";
        tag = "td";
      }
      lineStart += line.size() + 1;
    }
  }

  std::string rows;
  std::vector<CellStart> cells;
};

std::string naiveRows(const std::string& content, std::string_view separator = ",") {
  return NaiveTable(content, separator).rows;
}

std::string rowsBy(const KernelSet& set, std::string_view content,
                   std::string_view separator = ",") {
  ExactOutput out;
  writeTableRows(out, content, separator, set);
  return out.take();
}

std::string rows(std::string_view content, std::string_view separator = ",") {
  return rowsBy(kernels(), content, separator);
}

struct TableRow {
  const char* label;
  std::string content;
  const char* separator;
  const char* rows;
};

const TableRow kRows[] = {
    {"two lines", "a,b\n1,2\n", ",", "<tr><th>a</th><th>b</th></tr><tr><td>1</td><td>2</td></tr>"},
    {"no last line feed", "a,b\n1,2", ",",
     "<tr><th>a</th><th>b</th></tr><tr><td>1</td><td>2</td></tr>"},
    {"quoted separator", "\"x, y\",z", ",", "<tr><th>x</th><th> y</th><th>z</th></tr>"},
    {"doubled quotes", "\"say \"\"yes\"\"\",b", ",", "<tr><th>say \"\"yes</th><th>b</th></tr>"},
    {"quotes alone", "\"\",\",\"\"\"", ",", "<tr><th></th><th></th><th></th></tr>"},
    {"one quote", "\"", ",", "<tr><th></th></tr>"},
    {"blanks are kept", " a , b ", ",", "<tr><th> a </th><th> b </th></tr>"},
    {"blank outside a quote", "\"a\" ,b", ",", "<tr><th>a\" </th><th>b</th></tr>"},
    {"CRLF", "a,b\r\n1,2\r\n", ",", "<tr><th>a</th><th>b</th></tr><tr><td>1</td><td>2</td></tr>"},
    {"CRLF and quotes", "\"a\",\"b\"\r\n", ",", "<tr><th>a</th><th>b</th></tr>"},
    {"blank CRLF line", "a\r\n\r\nb\r\n", ",",
     "<tr><th>a</th></tr><tr><td></td></tr><tr><td>b</td></tr>"},
    {"carriage return alone is no line end", "a\rb,\rc\r", ",", "<tr><th>a\rb</th><th>c</th></tr>"},
    {"brackets and an ampersand", "a<b>&c", ",", "<tr><th>a&lt;b&gt;&c</th></tr>"},
    {"an entity stays", "&amp;&lt;", ",", "<tr><th>&amp;&lt;</th></tr>"},
    {"quotes inside brackets", "\"<\",<\">", ",", "<tr><th>&lt;</th><th>&lt;\"&gt;</th></tr>"},
    {"tabs read with a comma", "a\tb\nc\td", ",", "<tr><th>a\tb</th></tr><tr><td>c\td</td></tr>"},
    {"tabs", "a\tb\n1\t2", "\t", "<tr><th>a</th><th>b</th></tr><tr><td>1</td><td>2</td></tr>"},
    {"a line of tabs is blank", "a\tb\n\t\nc", "\t",
     "<tr><th>a</th><th>b</th></tr><tr><td>c</td></tr>"},
    {"commas alone", ",,", ",", "<tr><th></th><th></th><th></th></tr>"},
    {"rows of other lengths", "a,b\n1\n1,2,3\n", ",",
     "<tr><th>a</th><th>b</th></tr><tr><td>1</td></tr>"
     "<tr><td>1</td><td>2</td><td>3</td></tr>"},
    {"the header is the first line kept", "\n \n\t\na\n\nb", ",",
     "<tr><th>a</th></tr><tr><td>b</td></tr>"},
    {"wide blanks alone", "a\n\xE3\x80\x80\xC2\xA0 \nb", ",",
     "<tr><th>a</th></tr><tr><td>b</td></tr>"},
    {"other line breaks are text", "a\xC2\x85\n\xE2\x80\xA8\nb\x0B\n\x0C", ",",
     "<tr><th>a\xC2\x85</th></tr><tr><td>\xE2\x80\xA8</td></tr><tr><td>b\x0B</td></tr>"
     "<tr><td>\x0C</td></tr>"},
    {"several characters", "a::b:c::", "::", "<tr><th>a</th><th>b:c</th><th></th></tr>"},
    {"overlapping separators", "a:::b", "::", "<tr><th>a</th><th>:b</th></tr>"},
    {"a separator that is not ASCII",
     "a\xE2\x82\xAC"
     "b\xE2\x82",
     "\xE2\x82\xAC", "<tr><th>a</th><th>b\xE2\x82</th></tr>"},
    {"no separator", "a,b\nc", "", "<tr><th>a,b</th></tr><tr><td>c</td></tr>"},
    {"a quote as separator", "a\"b\"", "\"", "<tr><th>a</th><th>b</th><th></th></tr>"},
    {"a bracket as separator", "a<b>", "<", "<tr><th>a</th><th>b&gt;</th></tr>"},
    {"a carriage return as separator", "a\rb\r\n", "\r", "<tr><th>a</th><th>b</th><th></th></tr>"},
    {"a line feed never separates", "a\nb", "\n", "<tr><th>a</th></tr><tr><td>b</td></tr>"},
    {"a blank as separator", "a b", " ", "<tr><th>a</th><th>b</th></tr>"},
};

TEST(TableRows, AreWhatTheLinesSay) {
  for (const TableRow& row : kRows) {
    EXPECT_EQ(rows(row.content, row.separator), row.rows) << row.label;
  }
}

TEST(TableRows, KeepNulBytes) {
  EXPECT_EQ(rows({"a\0b,\0\n\0", 7}),
            std::string("<tr><th>a\0b</th><th>\0</th></tr><tr><td>\0</td></tr>", 50));
}

// Each row of the list again, deep in a text that the kernels read.
TEST(TableKernels, DoWhatTheListSaysOnLongTexts) {
  for (const KernelSet* set : runnableKernelSets()) {
    for (const TableRow& row : kRows) {
      for (std::size_t before = 0; before < 130; ++before) {
        const std::string text = std::string(before, 'x') + "\n" +
                                 repeated(row.content + "\n", 200) + std::string(before, 'y');
        const ExactCopy exact(text);
        ASSERT_EQ(rowsBy(*set, exact.text(), row.separator), naiveRows(text, row.separator))
            << set->name << ": " << row.label;
      }
    }
  }
}

TEST(TableKernels, TakeEveryShortLineAsTheNaiveWayDoes) {
  for (const std::string& part : allTexts("a,\"\r\n< ", 5)) {
    const std::string text = repeated(part, part.empty() ? 0 : 200);
    const std::string expected = naiveRows(text);
    for (const KernelSet* set : runnableKernelSets()) {
      ASSERT_EQ(rowsBy(*set, text), expected) << set->name << " " << testing::PrintToString(part);
    }
    ASSERT_EQ(rows(part), naiveRows(part)) << testing::PrintToString(part);
  }
}

TEST(TableKernels, AgreeOnEveryLengthAndOffset) {
  std::mt19937 random(1);
  for (const KernelSet* set : runnableKernelSets()) {
    for (std::size_t size = 0; size <= 300; ++size) {
      for (const char* alphabet :
           {"abcdef,\n", "ab,,\"\"\r\n<> \t", "\",\r", "a\n \xE3\x80\xC2\xA0"}) {
        const std::string text = randomText(random, alphabet, size);
        const ExactCopy exact(text, size * 7 % 65);
        for (const char* separator : {",", "\t", "a", " "}) {
          ASSERT_EQ(rowsBy(*set, exact.text(), separator), naiveRows(text, separator)) << set->name;
        }
      }
    }
  }
}

// A kernel stops at the start of a cell, having written nothing of it and all before it.
TEST(TableKernels, StopAtACellWhateverTheRoom) {
  std::mt19937 random(2);
  for (const KernelSet* set : runnableKernelSets()) {
    for (std::size_t room = 0; room < 3000; room += 7) {
      const char* alphabet = room % 2 == 0 ? "abc,\n\"" : "<,\na";
      std::string text = randomText(random, alphabet, 1000);
      text.front() = 'h';  // so that the first line is kept
      const NaiveTable naive(text, ",");
      const ExactCopy exact(text);
      const auto window = std::make_unique_for_overwrite<char[]>(room);
      const TableCursor stop = set->writeRows({exact.begin(), window.get(), true, true},
                                              exact.end(), window.get() + room, ',');
      ASSERT_TRUE(stop.isRowOpen);
      const auto in = static_cast<std::size_t>(stop.in - exact.begin());
      const auto out = static_cast<std::size_t>(stop.out - window.get());
      ASSERT_EQ("<tr>" + std::string(window.get(), out), naive.rows.substr(0, out + 4));
      ASSERT_TRUE(
          std::any_of(naive.cells.begin(), naive.cells.end(),
                      [&](const CellStart& cell) { return cell.in == in && cell.out == out + 4; }))
          << set->name << " " << room;
    }
  }
}

TEST(TableRows, LoseNothingWhereWindowsMeet) {
  std::mt19937 random(3);
  for (std::size_t length = 65536 - 1200; length < 65536 + 200; length += 29) {
    const std::string text = "h,\"" + std::string(length, 'x') + "\"\"\r," +
                             randomText(random, "ab,\"\n<", 2000) + "\n" +
                             std::string(length, '"') + "\n" + std::string(length, '<') + ",\n";
    const std::string expected = naiveRows(text);
    for (const KernelSet* set : runnableKernelSets()) {
      ASSERT_TRUE(rowsBy(*set, text) == expected) << set->name << " " << length;
    }
  }
}

TEST(TableRows, FillManyWindows) {
  std::mt19937 random(4);
  for (const char* alphabet :
       {"abcdefgh,\n", "a,", "a\n", ",\n", "\"a,\r\n", "<>,", "abcdefghij"}) {
    const std::string text = randomText(random, alphabet, 400001);
    const std::string expected = naiveRows(text);
    for (const KernelSet* set : runnableKernelSets()) {
      EXPECT_TRUE(rowsBy(*set, text) == expected) << set->name << " " << alphabet;
    }
  }
}

TEST(TableRows, TakeHostileShapes) {
  const std::size_t size = 1 << 20;
  std::string letterAndQuotes(size, '"');
  letterAndQuotes.front() = 'a';
  const std::vector<std::pair<const char*, std::string>> texts = {
      {"10,000 columns", repeated("cell,", 50000) + "\n" + repeated("1,", 20000) + "\n"},
      {"a cell of 1 MB", std::string(size, 'x')},
      {"1 MB of quotes", std::string(size, '"') + ",a\n"},
      {"1 MB of quotes behind a letter", letterAndQuotes},
      {"1 MB of carriage returns", std::string(size, '\r')},
      {"1 MB of line feeds", std::string(size, '\n') + "a"},
      {"1 MB of blanks before a letter", std::string(size, ' ') + "a\nb"},
      {"1 MB of separators", std::string(size, ',')},
      {"1 MB of brackets", std::string(size, '<')},
      {"1 MB of rows", repeated("a\n", size)},
      {"1 MB of wide blanks", repeated("\xE3\x80\x80", size) + "\nb"},
  };
  for (const auto& [label, text] : texts) {
    EXPECT_TRUE(rows(text) == naiveRows(text)) << label;
  }
}

TEST(LargestTableRowsSize, IsNeverExceeded) {
  std::mt19937 random(5);
  for (const char* separator : {",", "\t", "", "::", "<", "\"", "\n"}) {
    for (std::size_t size = 0; size < 400; ++size) {
      const std::string text = randomText(random, "a,\t:<>\"\n", size);
      ASSERT_LE(rows(text, separator).size(), largestTableRowsSize(text, separator));
    }
  }
  EXPECT_EQ(largestTableRowsSize("a,b\n1,<", ","),
            std::string("<tr><td>a</td><td>b</td></tr><tr><td>1</td><td>&lt;</td></tr>").size());
}

const FileURL kFile = FileURL::fromPath("/data/my tables/prices.csv");

TEST(TablePage, WrapsTheRowsInAScrollableTable) {
  for (const bool isDark : {false, true}) {
    EXPECT_EQ(buildTableHTML("a,b\n1,<2>\n", kFile, ",", isDark),
              buildCodePage("<div style=\"overflow:auto\"><table><tr><th>a</th><th>b</th></tr>"
                            "<tr><td>1</td><td>&lt;2&gt;</td></tr></table></div>",
                            "file:///data/my%20tables/", isDark));
  }
}

TEST(TablePage, SaysThatAFileIsEmpty) {
  const std::string expected =
      buildCodePage("<p>Empty file.</p>", "file:///data/my%20tables/", false);
  for (const char* content : {"", "\n", " ", " \t\n\t \n\n", "\xC2\xA0\n\xE2\x80\x83"}) {
    EXPECT_EQ(buildTableHTML(content, kFile, ",", false), expected);
  }
  EXPECT_NE(buildTableHTML("\r\n", kFile, ",", false), expected);
}

TEST(TablePage, IsTheSameWrittenAndBuilt) {
  std::mt19937 random(6);
  const std::string content = randomText(random, "abcdefg,\n<\"", 200000);
  ExactOutput out;
  writeTableHTML(out, content, kFile, ",", true);
  EXPECT_TRUE(out.take() == buildTableHTML(content, kFile, ",", true));
}

}  // namespace
}  // namespace lumisk
