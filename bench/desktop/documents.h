#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace lumisk::bench {

/// Files to preview, in a temporary folder that goes with this object.
class Documents {
 public:
  Documents();
  Documents(const Documents&) = delete;
  Documents& operator=(const Documents&) = delete;
  ~Documents();

  std::string source(std::size_t size) const;
  std::string json(std::size_t size) const;
  std::string table(std::size_t size) const;
  /// Sections of 3 KB: prose, a list, a table, code in four languages, two formulas, a call-out.
  std::string markdown(std::size_t size) const;
  /// The same with a diagram.
  std::string markdownWithDiagram(std::size_t size) const;
  std::string folder(int entries) const;
  /// One file of this name and text.
  std::string file(const std::string& name, const std::string& text) const;

 private:
  std::filesystem::path path_;
};

}  // namespace lumisk::bench
