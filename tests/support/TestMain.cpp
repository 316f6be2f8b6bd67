#include "tests/support/ThreadsEnd.h"

#include <QGuiApplication>
#include <QStandardPaths>

#include <gtest/gtest.h>

/// Tests run with an event loop at hand and never touch the person's own folders.
int main(int argc, char** argv)
{
    QStandardPaths::setTestModeEnabled(true);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QGuiApplication application(argc, argv);
    const int status = RUN_ALL_TESTS();
    tessary::testing::letThreadsEnd();
    return status;
}
