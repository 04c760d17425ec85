#include "platform/fatal.h"

#include <cstdio>
#include <cstdlib>

namespace tarnbeck {

void fatalError(std::string_view reason) {
  std::fprintf(stderr, "Tarnbeck: fatal error: %.*s\n", static_cast<int>(reason.size()), reason.data());
  std::fflush(stderr);
  std::abort();
}

}  // namespace tarnbeck
