// A stand-in for /usr/bin/log in the tests. Every run:
//  - appends its argument list (joined by the unit separator 0x1F) as one line to
//    $FAKE_LOG_DIR/calls.txt;
//  - checks it against N.expect (the N-th run) or all.expect, which must exist: a missing
//    expectation exits 98, a different argument list exits 99, both with a message;
//  - sleeps N.sleep milliseconds if asked, prints N.out (or all.out), or N.bytes bytes of
//    generated syslog-style lines, and exits with N.status (or all.status, else 0).
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>

namespace {

std::string dir;

bool readFile(const std::string& name, std::string& content) {
  std::ifstream in(dir + "/" + name, std::ios::binary);
  if (!in) return false;
  std::ostringstream buffer;
  buffer << in.rdbuf();
  content = buffer.str();
  return true;
}

bool readFor(int run, const std::string& kind, std::string& content) {
  return readFile(std::to_string(run) + "." + kind, content) || readFile("all." + kind, content);
}

void printGenerated(long long bytes) {
  static const char line[] =
      "2018-03-04 05:06:07.123456+0100  localhost kernel[0]: (AppleACPIPlatform) generated line for a large run\n";
  const long long size = static_cast<long long>(sizeof(line) - 1);
  std::string block;
  for (int i = 0; i < 4096; ++i) block += line;
  long long left = bytes;
  while (left > 0) {
    const long long n = left < static_cast<long long>(block.size()) ? left : static_cast<long long>(block.size());
    if (std::fwrite(block.data(), 1, static_cast<std::size_t>(n), stdout) != static_cast<std::size_t>(n)) return;
    left -= n;
  }
  (void)size;
}

}  // namespace

int main(int argc, char** argv) {
  const char* where = std::getenv("FAKE_LOG_DIR");
  if (!where) {
    std::fprintf(stderr, "fake log: FAKE_LOG_DIR is not set\n");
    return 97;
  }
  dir = where;
  std::string joined;
  for (int i = 1; i < argc; ++i) {
    if (i > 1) joined += '\x1f';
    joined += argv[i];
  }
  int run = 1;
  std::string counter;
  if (readFile("counter", counter)) run = std::atoi(counter.c_str()) + 1;
  std::ofstream(dir + "/counter", std::ios::trunc) << run;
  std::ofstream(dir + "/calls.txt", std::ios::app) << joined << '\n';

  std::string expected;
  if (!readFor(run, "expect", expected)) {
    std::fprintf(stderr, "fake log: run %d has no expected argument list\n", run);
    return 98;
  }
  if (expected != joined) {
    std::fprintf(stderr, "fake log: run %d got unexpected arguments\n  expected: %s\n  got:      %s\n", run,
                 expected.c_str(), joined.c_str());
    return 99;
  }
  std::string value;
  if (readFor(run, "sleep", value)) std::this_thread::sleep_for(std::chrono::milliseconds(std::atoll(value.c_str())));
  if (readFor(run, "bytes", value)) {
    printGenerated(std::atoll(value.c_str()));
  } else if (readFor(run, "out", value)) {
    std::fwrite(value.data(), 1, value.size(), stdout);
  }
  std::fflush(stdout);
  if (readFor(run, "status", value)) return std::atoi(value.c_str());
  return 0;
}
