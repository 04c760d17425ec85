#pragma once
// Log entries as the tool prints them with "--style json": one array of dictionaries.
// Numbers keep their exact value: trace IDs, mach time stamps and program counters are
// unsigned 64-bit and often above 2^63.
#include <nlohmann/json.hpp>

#include <memory>
#include <string_view>

namespace tarnbeck {

// An immutable array of entries, shared between the window's field and a restyle.
using LogEntries = std::shared_ptr<const nlohmann::json>;

// An empty array.
LogEntries noLogEntries();

// Number of entries held (0 for none).
std::size_t entryCount(const LogEntries& entries);

// Parses the tool's JSON output. Output that is not JSON, or whose top level is not an
// array, is a state the tool never produces: the program stops with the reason on
// standard error.
LogEntries parseLogEntries(std::string_view bytes);

}  // namespace tarnbeck
