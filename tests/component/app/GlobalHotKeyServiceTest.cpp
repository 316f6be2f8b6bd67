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
    GlobalHotKeyService::Request request(HotKey hotKey, const char* text)
    {
        return {hotKey, HotKeyShortcut::fromRawValue(QString::fromLatin1(text)).value(),
                [this, hotKey] { ran.append(hotKey); }};
    }
    QSet<HotKey> registerAll(const QList<GlobalHotKeyService::Request>& requests)
    {
        return await(service->registerAll(requests));
    }
    QSet<HotKey> registerDefaults()
    {
        return registerAll({request(HotKey::QuickSearch, "v2|49|2048|Space"),
                            request(HotKey::LocalOCR, "v2|31|6144|O"),
                            request(HotKey::ToggleMonitoring, "v2|35|6144|P")});
    }

    testing::FakeGlobalHotKeyFacility facility;
    std::unique_ptr<GlobalHotKeyService> service = std::make_unique<GlobalHotKeyService>(facility);
    QList<HotKey> ran;
};

TEST_F(GlobalHotKeyServiceTest, TheSignatureIsItsFourCharactersBigEndian)
{
    EXPECT_EQ(GlobalHotKeyService::kSignature,
              (quint32{'T'} << 24) + (quint32{'S'} << 16) + (quint32{'R'} << 8) + 'Y');
}

TEST_F(GlobalHotKeyServiceTest, APressRunsItsActionAfterTheHandlerReturned)
{
    EXPECT_TRUE(registerDefaults().isEmpty());
    EXPECT_EQ(service->handle({GlobalHotKeyService::kSignature, 2}), GlobalHotKeyService::Answer::Handled);
    EXPECT_TRUE(ran.isEmpty());
    EXPECT_TRUE(eventually([this] { return ran == QList{HotKey::LocalOCR}; }));
    facility.press({35, 6144});
    EXPECT_TRUE(eventually([this] { return ran.size() == 2; }));
    EXPECT_EQ(ran.last(), HotKey::ToggleMonitoring);
}

TEST_F(GlobalHotKeyServiceTest, APressWithAForeignSignatureIsNotHandled)
{
    EXPECT_TRUE(registerDefaults().isEmpty());
    EXPECT_EQ(service->handle({0x41424344, 1}), GlobalHotKeyService::Answer::NotHandled);
    EXPECT_EQ(service->handle({GlobalHotKeyService::kSignature, 3}), GlobalHotKeyService::Answer::Handled);
    EXPECT_TRUE(eventually([this] { return !ran.isEmpty(); }));
    EXPECT_EQ(ran, QList{HotKey::ToggleMonitoring});
}

TEST_F(GlobalHotKeyServiceTest, ADisabledShortcutIsSkippedAndNoConflict)
{
    EXPECT_TRUE(registerDefaults().isEmpty());
    EXPECT_TRUE(registerAll({request(HotKey::QuickSearch, "disabled")}).isEmpty());
    EXPECT_FALSE(facility.isRegistered({49, 2048}));
    EXPECT_EQ(facility.registrations(), 2);
}

TEST_F(GlobalHotKeyServiceTest, AConflictOnLocalOCRAloneLeavesTheOthers)
{
    facility.take({31, 6144});
    EXPECT_EQ(registerDefaults(), QSet{HotKey::LocalOCR});
    EXPECT_TRUE(facility.isRegistered({49, 2048}));
    EXPECT_TRUE(facility.isRegistered({35, 6144}));
}

TEST_F(GlobalHotKeyServiceTest, TwoOfOurOwnOnOneCombinationMakeTheSecondAConflict)
{
    EXPECT_EQ(registerAll(
                  {request(HotKey::QuickSearch, "v2|31|6144|O"), request(HotKey::LocalOCR, "v2|31|6144|O")}),
              QSet{HotKey::LocalOCR});
}

TEST_F(GlobalHotKeyServiceTest, RegisteringAgainReplacesTheShortcut)
{
    EXPECT_TRUE(registerDefaults().isEmpty());
    EXPECT_TRUE(registerDefaults().isEmpty());
    EXPECT_TRUE(registerAll({request(HotKey::LocalOCR, "v2|15|6144|R")}).isEmpty());
    EXPECT_FALSE(facility.isRegistered({31, 6144}));
    EXPECT_TRUE(facility.isRegistered({15, 6144}));
}

TEST_F(GlobalHotKeyServiceTest, ItsEndLetsGoOfEverything)
{
    EXPECT_TRUE(registerDefaults().isEmpty());
    service.reset();
    EXPECT_EQ(facility.registrations(), 0);
    facility.deliver({GlobalHotKeyService::kSignature, 1});
    EXPECT_TRUE(ran.isEmpty());
}

} // namespace
} // namespace tessary
