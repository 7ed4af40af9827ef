#include "fuzz/target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  touch::fuzz::execute({data, size});
  return 0;
}
