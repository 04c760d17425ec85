#pragma once
#include <string_view>

namespace tarnbeck {

// Stops the program on a state that well-formed input and correct callers never produce
// (the tool's JSON that is not an array, a stored period of the wrong shape, ...).
// The reason goes to standard error so that the stop is never silent.
[[noreturn]] void fatalError(std::string_view reason);

}  // namespace tarnbeck
