#include "bench/rapidjson_peer.h"

#define RAPIDJSON_NAMESPACE rapidjson
#include "bench/rapidjson_peer.inc"

namespace lumisk::bench {

std::function<void()> rapidJson(const std::string& text) { return formatting(text); }

}  // namespace lumisk::bench
