#include "bench/desktop/documents.h"

#include <cstdlib>
#include <fstream>

#include "bench/corpora.h"
#include "bench/json_corpora.h"

namespace lumisk::bench {
namespace {

constexpr int kProseForOneSection = 4;

constexpr const char* kSection = R"(## What the section says

A paragraph of *prose* with a [link](other.md), `code`, a formula $e^{i\pi} + 1 = 0$ and **weight**,
long enough to be broken into lines where the window ends.

$$\sum_{k=1}^{n} k = \frac{n(n+1)}{2}$$

- one thing
- [x] another that is done

| name | value |
| --- | --- |
| width | 880 |

```python
def area(width: int, height: int) -> int:
    return width * height  # pixels
```

```cpp
template <typename T>
T largest(const std::vector<T>& values) { return *std::max_element(values.begin(), values.end()); }
```

```json
{"name": "value", "list": [1, 2.5, null, true]}
```

```sh
for file in *.md; do lumisk page "$file" > "${file%.md}.html"; done
```

> [!NOTE]
> A call-out.

)";

constexpr const char* kProse = R"(## In other words

Most of a document is words: sentences that follow one another, with a *stressed* one here, a `name`
there and a [link](other.md) in between. A previewer is judged by how soon they can be read.

- Lists have items of a line or two, which is what most of them look like,
- and some of them say `code`.

They go on for a while, because a document of one paragraph would be no measure of anything, and a
document of a hundred pages is not what people put beside their programs either.

)";

constexpr const char* kDiagram = R"(```mermaid
graph TD
  A[Request] --> B{Kind}
  B -->|Markdown| C[Page]
  B -->|Folder| D[List]
  C --> E[Panel]
  D --> E
```

)";

std::string sections(std::size_t size, const std::string& opening) {
  std::string text = opening;
  do {
    text += kSection;
    for (int i = 0; i < kProseForOneSection; ++i) text += kProse;
  } while (text.size() < size);
  return text;
}

}  // namespace

Documents::Documents() {
  std::string pattern = std::filesystem::temp_directory_path() / "lumisk-desktop-bench-XXXXXX";
  path_ = mkdtemp(pattern.data());
}

Documents::~Documents() { std::filesystem::remove_all(path_); }

std::string Documents::file(const std::string& name, const std::string& text) const {
  const std::string path = path_ / name;
  std::ofstream(path, std::ios::binary) << text;
  return path;
}

std::string Documents::source(std::size_t size) const {
  return file("source-" + std::to_string(size) + ".cpp", sourceText(size));
}

std::string Documents::json(std::size_t size) const {
  return file("data-" + std::to_string(size) + ".json", recordJson(size));
}

std::string Documents::table(std::size_t size) const {
  return file("table-" + std::to_string(size) + ".csv", csvText(size, CellQuotes::Some));
}

std::string Documents::markdown(std::size_t size) const {
  return file("text-" + std::to_string(size) + ".md", sections(size, "# A document\n\n"));
}

std::string Documents::markdownWithDiagram(std::size_t size) const {
  return file("diagram-" + std::to_string(size) + ".md",
              sections(size, std::string("# A document\n\n") + kDiagram));
}

std::string Documents::folder(int entries) const {
  const std::filesystem::path folder = path_ / ("folder-" + std::to_string(entries));
  std::filesystem::create_directory(folder);
  for (int i = 0; i < entries; ++i)
    std::ofstream(folder / ("entry " + std::to_string(i) + ".txt")).put('x');
  return folder;
}

}  // namespace lumisk::bench
