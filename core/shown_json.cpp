#include "core/shown_json.h"

#include "core/escape.h"
#include "core/json_format.h"

namespace lumisk {

void ShownJson::set(std::string_view text, std::string_view surrounding) {
  text_ = text;
  draft_.restart();
  isJson_ = appendFormattedJson(draft_, text, surrounding);
}

std::size_t ShownJson::size() const {
  return isJson_ ? draft_.size() : escapedSize(text_, Escaping::Html);
}

void ShownJson::appendTo(Output& out) const {
  if (!isJson_) {
    appendEscaped(out, text_, Escaping::Html);
  } else if (draft_.isComplete()) {
    out.append(draft_.text());
  } else {
    static_cast<void>(appendFormattedJson(out, text_));  // as it succeeded before
  }
}

}  // namespace lumisk
