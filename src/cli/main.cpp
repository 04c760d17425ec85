#include "cli/commands.h"

#include <QCoreApplication>
#include <QStringList>

#include <unistd.h>

int main(int argc, char** argv) {
  QStringList arguments;
  for (int i = 1; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  return tarnbeck::cli::runCommandLine(arguments, stdout, stderr, isatty(STDOUT_FILENO) != 0);
}
