#include "tests/support/ThreadsEnd.h"

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
    const int status = RUN_ALL_TESTS();
    tessary::testing::letThreadsEnd();
    return status;
}
