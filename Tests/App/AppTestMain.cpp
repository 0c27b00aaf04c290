#include <gtest/gtest.h>

#include <QApplication>

// The tests of the app run within an application of their own that draws off screen, and see
// nothing of the user's.
int main(int argumentCount, char** arguments) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  testing::InitGoogleTest(&argumentCount, arguments);
  const QApplication application(argumentCount, arguments);
  return RUN_ALL_TESTS();
}
