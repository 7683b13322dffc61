#pragma once

#include <cstddef>
#include <span>

namespace lumisk {

// The inner loops that read every byte of a file. Each exists in several versions that do the same
// work, one for each instruction set that pays; the fastest that the processor runs is chosen once.
// They take and return bare pointers, because the files that are compiled for a newer processor
// must not instantiate inline library code: the linker could keep that copy for everyone.

/// How far a kernel came.
struct KernelProgress {
  const char* in;
  char* out;
};

/// Writes the escaped form of a prefix of [in, inEnd) below `outEnd`. It stops short of `inEnd`
/// only when fewer than kEscapeRoom bytes are left to write to; bytes up to `outEnd` may be
/// scribbled on.
using EscapeKernel = KernelProgress(const char* in, const char* inEnd, char* out,
                                    const char* outEnd);
inline constexpr std::size_t kEscapeRoom = 512;

/// How many of the bytes [in, inEnd) equal `one` or `other`.
using CountKernel = std::size_t(const char* in, const char* inEnd, char one, char other);

/// Whether [in, inEnd) is well-formed UTF-8.
using Utf8Kernel = bool(const char* in, const char* inEnd);

/// A place in a table: the start of a cell in a row whose "<tr>" is written, or, when `isRowOpen`
/// is false, the end of the text after the last row's "</tr>".
struct TableCursor {
  const char* in;
  char* out;
  bool isHeader;
  bool isRowOpen;
};

/// Writes cells and rows from `start` (its row open) for as long as whole cells fit below `outEnd`,
/// and returns the place that follows them: `start` itself when not one cell fitted, or when the
/// text that is left is too short for vectors. `separator` is none of the bytes that have a meaning
/// of their own in a table file: double quote, angle bracket, carriage return, line feed.
using TableKernel = TableCursor(TableCursor start, const char* inEnd, const char* outEnd,
                                char separator);

/// Every kernel in one version.
struct KernelSet {
  const char* name;
  EscapeKernel* escapeMarkup;         ///< Escaping::Html
  EscapeKernel* escapeAngleBrackets;  ///< Escaping::AngleBracketsOnly
  CountKernel* countEither;
  Utf8Kernel* isUtf8;
  TableKernel* writeRows;
};

/// The sets that this machine runs, the slowest (portable) first.
std::span<const KernelSet* const> runnableKernelSets();

/// The fastest of them.
const KernelSet& kernels();

}  // namespace lumisk
