#include "app/SystemIntegrationService.h"

#include "platform/testing/FakeLoginItem.h"
#include "platform/testing/FakePrivacySettings.h"
#include "tests/support/Await.h"

namespace tessary {
namespace {

using testing::await;

class SystemIntegrationServiceTest : public ::testing::Test {
protected:
    testing::FakeLoginItem loginItem;
    testing::FakePrivacySettings pages;
    SystemIntegrationService service{loginItem, pages};
};

TEST_F(SystemIntegrationServiceTest, WhatIsSoAlreadyIsNotAskedFor)
{
    await(service.setLaunchAtLogin(false));
    EXPECT_EQ(loginItem.changes(), 0);
    await(service.setLaunchAtLogin(true));
    EXPECT_EQ(loginItem.changes(), 1);
    await(service.setLaunchAtLogin(true));
    EXPECT_EQ(loginItem.changes(), 1);
    await(service.setLaunchAtLogin(false));
    EXPECT_EQ(loginItem.changes(), 2);
    EXPECT_FALSE(loginItem.wasEnabled());
}

TEST_F(SystemIntegrationServiceTest, TheLastOfSeveralCallsWins)
{
    auto on = service.setLaunchAtLogin(true);
    auto off = service.setLaunchAtLogin(false);
    auto onAgain = service.setLaunchAtLogin(true);
    auto offAgain = service.setLaunchAtLogin(false);
    await(std::move(offAgain));
    EXPECT_FALSE(loginItem.wasEnabled());
    EXPECT_EQ(loginItem.changes(), 4);
}

TEST_F(SystemIntegrationServiceTest, AFailureIsThrownAndTheNextCallTriesAgain)
{
    loginItem.failWith(FileError::Case::WriteOutOfSpace);
    EXPECT_THROW(await(service.setLaunchAtLogin(true)), FileError);
    loginItem.failWith(std::nullopt);
    await(service.setLaunchAtLogin(true));
    EXPECT_TRUE(loginItem.wasEnabled());
}

TEST_F(SystemIntegrationServiceTest, OpensThePageOfTheAnchor)
{
    await(service.openPrivacySettings(QStringLiteral("Privacy_Accessibility")));
    EXPECT_EQ(pages.opened(), QStringList{QStringLiteral("Privacy_Accessibility")});
}

} // namespace
} // namespace tessary
