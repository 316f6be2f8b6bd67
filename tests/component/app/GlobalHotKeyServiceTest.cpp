#include "app/GlobalHotKeyService.h"

#include "platform/testing/FakeGlobalHotKeyFacility.h"
#include "tests/support/Await.h"

namespace tessary {
namespace {

using testing::await;
using testing::eventually;
using HotKey = GlobalHotKeyService::HotKey;

class GlobalHotKeyServiceTest : public ::testing::Test {
protected:
    GlobalHotKeyService::Binding binding(HotKey hotKey, const HotKeyShortcut& shortcut)
    {
        return {hotKey, shortcut, [this, hotKey] { pressed.append(hotKey); }};
    }
    QSet<HotKey> registerAll(const HotKeyShortcut& search, const HotKeyShortcut& ocr,
                             const HotKeyShortcut& toggle)
    {
        return await(
            service->registerHotKeys({binding(HotKey::QuickSearch, search), binding(HotKey::LocalOCR, ocr),
                                      binding(HotKey::ToggleMonitoring, toggle)}));
    }

    const HotKeyShortcut space{49, 2048, QStringLiteral("Space")};
    const HotKeyShortcut letterO{31, 6144, QStringLiteral("O")};
    const HotKeyShortcut letterP{35, 6144, QStringLiteral("P")};
    testing::FakeGlobalHotKeyFacility facility;
    std::unique_ptr<GlobalHotKeyService> service = std::make_unique<GlobalHotKeyService>(facility);
    QList<HotKey> pressed;
};

TEST_F(GlobalHotKeyServiceTest, CallsTheActionOfThePressedCombination)
{
    EXPECT_TRUE(registerAll(space, letterO, letterP).isEmpty());
    facility.press({35, 6144});
    facility.press({49, 2048});
    ASSERT_TRUE(eventually([&] { return pressed.size() == 2; }));
    EXPECT_EQ(pressed, (QList{HotKey::ToggleMonitoring, HotKey::QuickSearch}));
}

TEST_F(GlobalHotKeyServiceTest, RunsTheActionOnlyAfterTheEventWasAnswered)
{
    registerAll(space, letterO, letterP);
    EXPECT_EQ(service->hotKeyPressed({GlobalHotKeyService::kSignature, 1}),
              GlobalHotKeyService::EventResult::Handled);
    EXPECT_TRUE(pressed.isEmpty());
    EXPECT_TRUE(eventually([&] { return pressed.size() == 1; }));
}

TEST_F(GlobalHotKeyServiceTest, PassesAnEventWithAForeignSignatureOn)
{
    registerAll(space, letterO, letterP);
    EXPECT_EQ(service->hotKeyPressed({0x41424344, 1}), GlobalHotKeyService::EventResult::NotHandled);
    facility.press({31, 6144});
    ASSERT_TRUE(eventually([&] { return !pressed.isEmpty(); }));
    EXPECT_EQ(pressed, QList{HotKey::LocalOCR});
}

TEST_F(GlobalHotKeyServiceTest, ReportsWhatAnotherProgramHolds)
{
    facility.take({31, 6144});
    EXPECT_EQ(registerAll(space, letterO, letterP), QSet{HotKey::LocalOCR});
    EXPECT_EQ(facility.registrations(), 2);
}

TEST_F(GlobalHotKeyServiceTest, ADisabledShortcutIsSkippedAndNoConflict)
{
    EXPECT_TRUE(registerAll(space, {}, letterP).isEmpty());
    EXPECT_EQ(facility.registrations(), 2);
}

TEST_F(GlobalHotKeyServiceTest, TheSecondOfTwoEqualShortcutsIsTheConflict)
{
    EXPECT_EQ(registerAll(space, letterO, letterO), QSet{HotKey::ToggleMonitoring});
}

TEST_F(GlobalHotKeyServiceTest, RegisteringAgainReplacesWhatWasRegistered)
{
    registerAll(space, letterO, letterP);
    const HotKeyShortcut other{4, 256, QStringLiteral("H")};
    EXPECT_TRUE(registerAll(other, letterO, letterP).isEmpty());
    EXPECT_FALSE(facility.isRegistered({49, 2048}));
    EXPECT_TRUE(facility.isRegistered({4, 256}));
    EXPECT_EQ(facility.registrations(), 3);
}

TEST_F(GlobalHotKeyServiceTest, UnregistersEverythingAtItsEnd)
{
    registerAll(space, letterO, letterP);
    service.reset();
    EXPECT_EQ(facility.registrations(), 0);
}

TEST_F(GlobalHotKeyServiceTest, ItsSignatureSpellsItsFourCharacters)
{
    EXPECT_EQ(GlobalHotKeyService::kSignature,
              (quint32('T') << 24) | (quint32('S') << 16) | (quint32('R') << 8) | 'Y');
}

} // namespace
} // namespace tessary
