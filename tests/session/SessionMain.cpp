#include <QCoreApplication>

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <vector>

/// A session test runs itself again on a private desktop, so that CTest gives every test a fresh one,
/// and so that it may also be started by hand. Listing the tests takes no display.
int main(int argc, char** argv)
{
    const bool lists = std::any_of(argv + 1, argv + argc, [](std::string_view argument) {
        return argument.starts_with("--gtest_list_tests");
    });
    if (!lists && qEnvironmentVariableIsEmpty("TESSARY_TEST_DESKTOP")) {
        qputenv("TESSARY_TEST_DESKTOP", "1");
        if (qEnvironmentVariableIsEmpty("RIG_TRAY"))
            qputenv("RIG_TRAY", "none");
        std::vector<char*> arguments{const_cast<char*>(TESSARY_RIG), argv[0]};
        arguments.insert(arguments.end(), argv + 1, argv + argc);
        arguments.push_back(nullptr);
        ::execv(TESSARY_RIG, arguments.data());
        std::perror(TESSARY_RIG);
        return 70;
    }
    testing::InitGoogleTest(&argc, argv);
    QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
