#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace lumisk {
class Output;
}

namespace lumisk::bench {

/// A page builder in both of its forms, and a text for it.
struct Builder {
  std::string name;
  std::function<std::string(std::size_t)> corpus;  ///< a text of at least that many bytes
  std::function<void(Output&, std::string_view)> write;
  std::function<std::string(std::string_view)> build;
};

/// Puts a builder into the tables below. For use at namespace scope, in any file of the program.
class RegisteredBuilder {
 public:
  explicit RegisteredBuilder(Builder builder);
};

/// The throughput of each builder, writing as the command does, from 1 KB to 256 MB: equal figures
/// down a column mean that the time is linear in the size.
void printLinearity(std::string_view filter);

/// The memory that each builder's returning form takes beyond its input and its page.
void printMemory(std::string_view filter);

}  // namespace lumisk::bench
