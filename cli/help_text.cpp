#include "cli/arguments.h"

namespace lumisk {

const std::string_view kHelpText =
    R"(Usage: lumisk [open] PATH…
       lumisk page [--dark|--light] [--mode MODE] PATH
       lumisk describe [--dark|--light] [--mode MODE] PATH
       lumisk snapshot [--dark|--light] [--size WxH] [--mode MODE] PATH PICTURE
       lumisk integrate [--remove|--status]
       lumisk --help | --version

Shows a file or folder at a glance.

Commands:
  open PATH…           show PATH in the preview window and return at once; the
                       arrow keys walk through several ("open" may be left out)
  page PATH            write the finished HTML page of the file PATH to standard
                       output
  describe PATH        write an outline of everything the preview of PATH shows:
                       one element a line, web pages by their length, digest
                       and base
  snapshot PATH PICTURE
                       write a picture of the preview in the PNG format; only
                       an older picture or an empty file is replaced
  integrate            make Lumisk the previewer of your file manager: Space
                       shows the selected item

PATH is a path or a file: URI; open takes other URIs, too, such as trash:///a.
Markdown becomes a document, JSON and JSON Lines are laid out, CSV and TSV
become tables, any other text coloured source, a folder a list.

Options:
  --dark, --light      the appearance (default: light)
  --mode MODE          for JSON and JSON Lines: "formatted" lays the document
                       out, "text" shows it as it stands (default: formatted
                       for JSON, text for JSON Lines); describe and snapshot
                       take "rendered" and "source" for Markdown, too
  --size WxH           the size of the picture, such as 800x600
  --remove             give the file manager its own previewer back
  --status             say which previewer the file managers start
  --                   what follows is no option
  -h, --help           show this text
  --version            show the version

Exit status: 0 when it was done, 1 when it cannot be, 2 when the command line is
wrong; "integrate --status" says 3 when Lumisk is not the previewer.
)";

}  // namespace lumisk
