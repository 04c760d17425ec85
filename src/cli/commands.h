#pragma once
// tarnbeck-cli: the app's reports, queries and charts without a window. What each
// subcommand prints is what the window's output view holds after the same steps.
#include <QStringList>

#include <cstdio>

namespace tarnbeck::cli {

// Exit statuses.
inline constexpr int kSuccess = 0;
inline constexpr int kFailure = 1;
inline constexpr int kBadUsage = 2;

// Runs the command line (without the program name); writes to the given streams.
int runCommandLine(const QStringList& arguments, std::FILE* out, std::FILE* err, bool outIsTerminal);

}  // namespace tarnbeck::cli
