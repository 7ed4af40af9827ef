#include "core/reply.h"

#include <algorithm>
#include <iterator>

namespace touch {

std::string Reply::text() const {
  std::string text;
  if (bytes.size() <= 3) return text;
  std::copy_if(bytes.begin() + 1, bytes.end() - 1, std::back_inserter(text),
               [](std::uint8_t byte) { return byte >= 0x20; });
  return text;
}

}  // namespace touch
