// Writes the sample log archive that scripts/run opens: tarnbeck-sample PATH
#include "tools/sample_writer.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: tarnbeck-sample PATH.logarchive\n");
    return 2;
  }
  const QString path = QString::fromLocal8Bit(argv[1]);
  if (QFileInfo::exists(path)) {
    std::fprintf(stderr, "tarnbeck-sample: %s exists already\n", argv[1]);
    return 1;
  }
  if (!tarnbeck::sample::writeSampleBundle(path)) {
    std::fprintf(stderr, "tarnbeck-sample: could not write %s\n", argv[1]);
    return 1;
  }
  return 0;
}
