// Test main for the tests that drive real widgets, headless.
#include "support/test_support.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  // Set in code: the test discovery at build time runs this binary too, with no display.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  tarnbeck::test::isolateUserDefaults();
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
