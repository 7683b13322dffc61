#pragma once

#include <cstddef>
#include <string_view>

namespace lumisk {

class Output;
struct KernelSet;

/// Writes a row for each line of `lines` that is kept, the first with header cells:
///
///     a,b          <tr><th>a</th><th>b</th></tr>
///     "1",<2>  →   <tr><td>1</td><td>&lt;2&gt;</td></tr>
void writeTableRows(Output& out, std::string_view lines, std::string_view separator);
/// The same with kernels of the caller's choice, which this machine must run.
void writeTableRows(Output& out, std::string_view lines, std::string_view separator,
                    const KernelSet& kernelSet);

/// No table of these lines is larger, in bytes: nothing is counted off for what is left out.
std::size_t largestTableRowsSize(std::string_view lines, std::string_view separator);

}  // namespace lumisk
