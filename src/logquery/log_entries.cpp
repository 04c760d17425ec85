#include "logquery/log_entries.h"

#include "platform/fatal.h"

#include <string>

namespace tarnbeck {

LogEntries noLogEntries() {
  static const LogEntries empty = std::make_shared<const nlohmann::json>(nlohmann::json::array());
  return empty;
}

std::size_t entryCount(const LogEntries& entries) { return entries && entries->is_array() ? entries->size() : 0; }

LogEntries parseLogEntries(std::string_view bytes) {
  nlohmann::json parsed = nlohmann::json::parse(bytes.begin(), bytes.end(), nullptr, /*allow_exceptions=*/false);
  if (parsed.is_discarded()) {
    fatalError("the log tool's JSON output does not parse as JSON");
  }
  if (!parsed.is_array()) {
    fatalError(std::string("the log tool's JSON output is not an array but ") + parsed.type_name());
  }
  return std::make_shared<const nlohmann::json>(std::move(parsed));
}

}  // namespace tarnbeck
