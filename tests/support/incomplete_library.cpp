#include "core/driver_operations.h"

// Every operation under its own name, but for one.
#define IsPenUp IsPenUpUnderAnotherName
#define INCOMPLETE_DEFINE(name, parameters, arguments) INCOMPLETE_DEFINE_NAMED(name, parameters)
#define INCOMPLETE_DEFINE_NAMED(name, parameters)                                  \
  extern "C" __attribute__((visibility("default"))) std::int32_t name parameters { \
    return 0;                                                                      \
  }

#pragma GCC diagnostic ignored "-Wunused-parameter"
NEXAPI_OPERATIONS(INCOMPLETE_DEFINE)
