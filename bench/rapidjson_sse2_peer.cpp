#include "bench/rapidjson_peer.h"

#define RAPIDJSON_NAMESPACE rapidjson_sse2
#if defined(__SSE2__)
#define RAPIDJSON_SSE2
#endif
#include "bench/rapidjson_peer.inc"

namespace lumisk::bench {

std::function<void()> rapidJsonSse2(const std::string& text) { return formatting(text); }

}  // namespace lumisk::bench
