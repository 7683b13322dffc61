#include "core/table_rows.h"

#include <algorithm>

#include "core/escape.h"
#include "core/kernels/kernel_set.h"
#include "core/output.h"
#include "core/table_lines.h"

namespace lumisk {

namespace {

constexpr std::string_view kTrimmed = "\"\r";

// A kernel that gets less writes too few cells to be worth its start.
constexpr std::size_t kRowsRoom = std::size_t{4} * 1024;

std::string_view textBetween(const char* begin, const char* end) {
  return {begin, static_cast<std::size_t>(end - begin)};
}

std::string_view trimmedCell(std::string_view cell) {
  const std::size_t first = cell.find_first_not_of(kTrimmed);
  if (first == std::string_view::npos) return {};
  return cell.substr(first, cell.find_last_not_of(kTrimmed) - first + 1);
}

/// Writes the rows of a table, one cell at a time here, and most of them by a kernel.
class TableRows {
 public:
  TableRows(Output& out, std::string_view lines, std::string_view separator,
            const KernelSet& kernelSet)
      : out_(out),
        kernels_(kernelSet),
        separator_(separator),
        at_(lines.data()),
        end_(at_ + lines.size()) {}

  void write() {
    for (at_ = firstKeptLine(at_, end_); at_ != end_; at_ = firstKeptLine(at_, end_)) {
      openRow();
      while (isRowOpen_) {
        if (!runKernel()) writeCell();
      }
    }
  }

 private:
  void openRow() {
    out_.append("<tr>");
    isRowOpen_ = true;
  }

  /// A separator with a meaning of its own, or one of several bytes, takes the slow way.
  bool hasKernelSeparator() const {
    return separator_.size() == 1 &&
           std::string_view("\"<>\r\n").find(separator_.front()) == std::string_view::npos;
  }

  /// False when it did not get any further.
  bool runKernel() {
    if (!hasKernelSeparator()) return false;
    char* to = out_.room(kRowsRoom);
    const TableCursor cursor =
        kernels_.writeRows({at_, to, isHeader_, true}, end_, out_.roomEnd(), separator_.front());
    if (cursor.in == at_) return false;
    out_.advance(cursor.out);
    at_ = cursor.in;
    isHeader_ = cursor.isHeader;
    isRowOpen_ = cursor.isRowOpen;
    return true;
  }

  void writeCell() {
    const std::string_view line = textBetween(at_, currentLineEnd());
    const std::size_t found = separator_.empty() ? std::string_view::npos : line.find(separator_);
    const std::size_t size = std::min(found, line.size());
    out_.append(isHeader_ ? "<th>" : "<td>");
    appendEscaped(out_, trimmedCell(line.substr(0, size)), Escaping::AngleBracketsOnly);
    out_.append(isHeader_ ? "</th>" : "</td>");
    at_ += size;
    if (found == std::string_view::npos) {
      closeRow();
    } else {
      at_ += separator_.size();
    }
  }

  void closeRow() {
    out_.append("</tr>");
    isRowOpen_ = false;
    isHeader_ = false;
    if (at_ != end_) ++at_;
  }

  /// Looked for once a line, so that a line of many cells is not read once for each.
  const char* currentLineEnd() {
    if (lineEnd_ == nullptr || lineEnd_ < at_) {
      const std::string_view rest = textBetween(at_, end_);
      lineEnd_ = at_ + std::min(rest.find('\n'), rest.size());
    }
    return lineEnd_;
  }

  Output& out_;
  const KernelSet& kernels_;
  const std::string_view separator_;
  const char* at_;
  const char* const end_;
  const char* lineEnd_ = nullptr;
  bool isRowOpen_ = false;
  bool isHeader_ = true;
};

// What fits the first-level cache is read from memory once and counted three times.
constexpr std::size_t kCountedAtOnce = std::size_t{16} * 1024;

constexpr std::size_t kCellTags = std::string_view("<td></td>").size();
constexpr std::size_t kRowTags = std::string_view("<tr></tr>").size();
constexpr std::size_t kSeparatorGrowth = kCellTags - 1;  // one byte or more falls away
constexpr std::size_t kBracketGrowth = std::string_view("&lt;").size() - 1;

std::size_t tagsAndEntities(const char* in, const char* inEnd, char separator) {
  CountKernel* count = kernels().countEither;
  return kSeparatorGrowth * count(in, inEnd, separator, '\n') +
         kRowTags * count(in, inEnd, '\n', '\n') + kBracketGrowth * count(in, inEnd, '<', '>');
}

}  // namespace

void writeTableRows(Output& out, std::string_view lines, std::string_view separator) {
  writeTableRows(out, lines, separator, kernels());
}

void writeTableRows(Output& out, std::string_view lines, std::string_view separator,
                    const KernelSet& kernelSet) {
  TableRows(out, lines, separator, kernelSet).write();
}

std::size_t largestTableRowsSize(std::string_view lines, std::string_view separator) {
  const char first = separator.empty() ? '\n' : separator.front();
  std::size_t size = lines.size() + kRowTags + kCellTags;
  while (!lines.empty()) {
    const std::string_view part = lines.substr(0, kCountedAtOnce);
    size += tagsAndEntities(part.data(), part.data() + part.size(), first);
    lines.remove_prefix(part.size());
  }
  return size;
}

}  // namespace lumisk
