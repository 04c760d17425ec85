// Test main for the tests that need no window.
#include "support/test_support.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  tarnbeck::test::isolateUserDefaults();
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
