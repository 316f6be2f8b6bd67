#include <QApplication>
#include <QStandardPaths>

#include <gtest/gtest.h>

/// As TestMain, for tests of widgets.
int main(int argc, char** argv)
{
    QStandardPaths::setTestModeEnabled(true);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
