#include "platform/process_runner.h"

#include <gtest/gtest.h>

#include <thread>

namespace tarnbeck {
namespace {

TEST(ProcessRunner, CapturesStandardOutputWhole) {
  ByteBuffer out;
  auto result = runProcess(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QStringLiteral("printf 'one\\ntwo'")}, out);
  EXPECT_EQ(result.outcome, ProcessResult::Outcome::Exited);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(out.view(), "one\ntwo");
  EXPECT_EQ(result.bytes, 7u);
}

TEST(ProcessRunner, ReportsExitStatus) {
  ByteBuffer out;
  auto result = runProcess(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QStringLiteral("exit 64")}, out);
  EXPECT_EQ(result.outcome, ProcessResult::Outcome::Exited);
  EXPECT_EQ(result.status, 64);
}

TEST(ProcessRunner, MissingProgramFailsToStartWithReason) {
  ByteBuffer out;
  auto result = runProcess(QStringLiteral("/nonexistent/log"), {QStringLiteral("show")}, out);
  EXPECT_EQ(result.outcome, ProcessResult::Outcome::FailedToStart);
  EXPECT_FALSE(result.startError.isEmpty());
}

TEST(ProcessRunner, OutputLargerThanThePipeDoesNotBlock) {
  CountingSink counter;
  auto result = runProcess(QStringLiteral("/bin/sh"),
                           {QStringLiteral("-c"), QStringLiteral("head -c 5000000 /dev/zero")}, counter);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(counter.count(), 5000000u);
}

TEST(ProcessRunner, CancelEndsTheChild) {
  ByteBuffer out;
  RunControl control;
  std::thread stopper([&control] {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    control.cancelRequested.store(true);
  });
  auto result = runProcess(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QStringLiteral("sleep 30")}, out, &control);
  stopper.join();
  EXPECT_EQ(result.outcome, ProcessResult::Outcome::Cancelled);
}

TEST(ByteBuffer, GrowsInPlaceAndKeepsBytes) {
  ByteBuffer buffer;
  buffer.append("abc");
  for (int i = 0; i < 1000; ++i) buffer.append(std::string(10000, 'x'));
  EXPECT_EQ(buffer.size(), 3u + 10000000u);
  EXPECT_EQ(buffer.view().substr(0, 4), "abcx");
  EXPECT_LE(buffer.capacity(), buffer.size() + buffer.size() / 8 + (2u << 20));
}

}  // namespace
}  // namespace tarnbeck
