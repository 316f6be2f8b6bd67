#include "ui/preview/PreviewWindow.h"

#include "tests/support/Await.h"
#include "tests/support/RecordSamples.h"
#include "ui/kit/EmptyState.h"
#include "ui/kit/Theme.h"
#include "ui/quicksearch/FactsPanel.h"
#include "ui/quicksearch/PicturePreview.h"
#include "ui/quicksearch/TextPage.h"

#include <QPointer>
#include <QWindow>

namespace tessary {
namespace {

using testing::eventually;

class PreviewWindowTest : public ::testing::Test {
protected:
    ~PreviewWindowTest() override { delete window.data(); }

    void open(const ScreenshotRecord& record)
    {
        const auto load = [this](QString path, int pixels) { return loaded(std::move(path), pixels); };
        window = new PreviewWindow(theme, load, record);
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->present();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.data()));
    }
    QCoro::Task<QImage> loaded(QString path, int pixels)
    {
        largest = std::max(largest, pixels);
        QImage image;
        if (path == QStringLiteral("there.png"))
            image = QImage(40, 20, QImage::Format_RGB32);
        co_return image;
    }
    static ScreenshotRecord picture(const QString& path)
    {
        ScreenshotRecord record;
        record.id = QUuid::createUuid();
        record.filename = QStringLiteral("截屏 1.png");
        record.libraryPath = path;
        record.pixelWidth = 4000;
        record.pixelHeight = 3000;
        return record;
    }

    Theme theme;
    QPointer<PreviewWindow> window;
    int largest = 0;
};

TEST_F(PreviewWindowTest, IsNamedAfterTheItemAndHasRoomForIt)
{
    open(testing::textRecord(QStringLiteral("first line\nsecond")));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("first line second"));
    EXPECT_EQ(window->size(), QSize(920, 680));
    EXPECT_EQ(window->minimumSize(), QSize(680, 480));
    EXPECT_EQ(window->findChild<TextPage*>()->shownText(), QStringLiteral("first line\nsecond"));
}

TEST_F(PreviewWindowTest, EscapeClosesIt)
{
    open(testing::textRecord(QStringLiteral("text")));
    QTest::keyClick(window->windowHandle(), Qt::Key_Escape);
    EXPECT_TRUE(eventually([&] { return window.isNull(); }));
}

TEST_F(PreviewWindowTest, APictureIsLoadedAsLargeAsItIsShown)
{
    open(picture(QStringLiteral("there.png")));
    auto* view = window->findChild<PicturePreview*>();
    ASSERT_TRUE(eventually([&] { return view->state() == AsyncFileImage::State::Shown; }));
    EXPECT_GE(largest, view->height() - 40);
}

TEST_F(PreviewWindowTest, AMissingPictureIsSaidWhileItsFactsAreShown)
{
    open(picture(QStringLiteral("gone.png")));
    auto* view = window->findChild<PicturePreview*>();
    ASSERT_TRUE(eventually([&] { return view->state() == AsyncFileImage::State::Unavailable; }));
    const auto* missing = view->findChild<EmptyState*>();
    EXPECT_TRUE(missing->isVisible());
    EXPECT_EQ(missing->accessibleName(), QStringLiteral("无法载入图片"));
    EXPECT_EQ(missing->accessibleDescription(), QStringLiteral("原始图片可能已被移动或删除"));
    EXPECT_TRUE(window->findChild<FactsPanel*>()->isVisible());
}

} // namespace
} // namespace tessary
