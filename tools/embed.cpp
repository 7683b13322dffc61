// embed INPUT OUTPUT: writes a text file as the pieces that core/page_template.cpp includes.
//
// A slot is written in the text as the name in the language of that file, so that editors and
// linters still read it: var(--quote-text) in a style sheet, {{dark-word}} in a script or page.
// One line feed at the end of the input is dropped, because editors insist on it and a template
// joins its parts itself.
//
//     a { color: var(--accent); }   →   literal("a { color: "), LUMISK_SLOT("accent"), literal(";
//     }")

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace {

struct Marker {
  std::string_view open;
  std::string_view close;
};
constexpr Marker kMarkers[] = {{"var(--", ")"}, {"{{", "}}"}};

// Compilers must accept string literals of 65,536 characters; this stays well below.
constexpr std::size_t kLongestLiteral = 16'000;

void writeLiteral(std::string& out, std::string_view text) {
  while (!text.empty()) {
    const std::string_view part = text.substr(0, kLongestLiteral);
    out += "    literal(R\"~~(";
    out += part;
    out += ")~~\"),\n";
    text.remove_prefix(part.size());
  }
}

std::string embedded(std::string_view text) {
  std::string out;
  std::size_t literal = 0;
  std::size_t at = 0;
  while (at < text.size()) {
    bool isSlot = false;
    for (const Marker& marker : kMarkers) {
      if (text.substr(at, marker.open.size()) != marker.open) continue;
      const std::size_t name = at + marker.open.size();
      const std::size_t end = text.find(marker.close, name);
      if (end == std::string_view::npos) continue;
      writeLiteral(out, text.substr(literal, at - literal));
      out += "    LUMISK_SLOT(\"";
      out += text.substr(name, end - name);
      out += "\"),\n";
      at = literal = end + marker.close.size();
      isSlot = true;
      break;
    }
    if (!isSlot) ++at;
  }
  writeLiteral(out, text.substr(literal));
  return out;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: embed INPUT OUTPUT\n", stderr);
    return 2;
  }
  std::ifstream in(argv[1], std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  if (in.bad() || text.empty()) {
    std::fprintf(stderr, "embed: cannot read %s\n", argv[1]);
    return 1;
  }
  if (text.back() == '\n') text.pop_back();
  std::ofstream out(argv[2], std::ios::binary);
  out << embedded(text);
  out.close();
  return out ? 0 : 1;
}
