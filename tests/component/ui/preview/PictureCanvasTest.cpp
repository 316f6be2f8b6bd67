#include "ui/preview/PictureCanvas.h"

#include "tests/support/Await.h"
#include "ui/kit/EmptyState.h"
#include "ui/kit/Theme.h"
#include "ui/preview/PictureTiles.h"

#include <QSignalSpy>
#include <QWheelEvent>

namespace tessary {
namespace {

using testing::eventually;

const QString kHuge = QStringLiteral("huge.png");
constexpr QSize kHugeSize(16000, 12000);

class PictureCanvasTest : public ::testing::Test {
protected:
    void open(const QString& path, const QSize& size)
    {
        picture = size;
        canvas.resize(640, 560);
        canvas.show();
        canvas.setPicture(path, {}, size);
    }
    void openHuge()
    {
        open(kHuge, kHugeSize);
        ASSERT_TRUE(eventually([&] { return canvas.state() == AsyncFileImage::State::Shown; }));
    }
    QCoro::Task<QImage> load(QString path, int pixels)
    {
        largest = std::max(largest, pixels);
        QImage image;
        if (path != QStringLiteral("gone.png")) {
            image = QImage(picture.boundedTo(picture.scaled(pixels, pixels, Qt::KeepAspectRatio)),
                           QImage::Format_RGB32);
            image.fill(Qt::red);
        }
        co_return image;
    }
    QCoro::Task<QImage> loadPart(QString, QRect part, QSize size)
    {
        parts.append({part, size});
        if (partsFail)
            throw std::runtime_error("no part");
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::blue);
        co_return image;
    }
    void wheel(const QPointF& at, int angle, Qt::KeyboardModifiers modifiers)
    {
        QWheelEvent event(at, canvas.mapToGlobal(at), {}, QPoint(0, angle), Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&canvas, &event);
    }
    bool isSharp() const { return canvas.isSharp(); }

    Theme theme;
    PictureTiles tiles;
    QSize picture;
    int largest = 0;
    bool partsFail = false;
    QList<std::pair<QRect, QSize>> parts;
    PictureCanvas canvas{
        theme, [this](QString path, int pixels) { return load(std::move(path), pixels); },
        [this](QString path, QRect part, QSize size) { return loadPart(std::move(path), part, size); },
        tiles};
};

TEST_F(PictureCanvasTest, AHugePictureIsFirstShownAtTheCanvassSize)
{
    openHuge();
    EXPECT_LE(largest, 640);
    EXPECT_TRUE(isSharp());
    EXPECT_TRUE(parts.isEmpty());
}

TEST_F(PictureCanvasTest, ZoomedItSharpensWhatIsInViewByOneRequest)
{
    openHuge();
    canvas.setScale(4);
    EXPECT_FALSE(isSharp());
    ASSERT_TRUE(eventually([&] { return isSharp(); }));
    ASSERT_EQ(parts.size(), 1);
    const auto [part, size] = parts.first();
    EXPECT_TRUE(QRect(QPoint(), kHugeSize).contains(part));
    EXPECT_LT(part.width(), kHugeSize.width());
    EXPECT_EQ(size, part.size() / 4);
    EXPECT_EQ(canvas.grab().toImage().pixelColor(320, 280), QColor(Qt::blue));
}

TEST_F(PictureCanvasTest, MovedItAsksOnlyForWhatIsMissing)
{
    openHuge();
    canvas.setScale(4);
    ASSERT_TRUE(eventually([&] { return isSharp(); }));
    const QRect first = parts.first().first;
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(&canvas, Qt::Key_Right);
    ASSERT_TRUE(eventually([&] { return isSharp(); }));
    ASSERT_EQ(parts.size(), 2);
    EXPECT_FALSE(parts.last().first.intersects(first));
}

TEST_F(PictureCanvasTest, WhatIsOutOfViewBeforeTheViewRestsIsNeverAskedFor)
{
    openHuge();
    canvas.setScale(4);
    canvas.setScale(2);
    canvas.setScale(1);
    canvas.setScale(3);
    ASSERT_TRUE(eventually([&] { return isSharp(); }));
    EXPECT_EQ(parts.size(), 1);
}

TEST_F(PictureCanvasTest, PartsThatCannotBeHadAreNotAskedForAgainAndAgain)
{
    openHuge();
    partsFail = true;
    canvas.setScale(4);
    ASSERT_TRUE(eventually([&] { return parts.size() == 1; }));
    QTest::keyClick(&canvas, Qt::Key_Left);
    QSignalSpy never(&canvas, &AsyncFileImage::stateChanged);
    EXPECT_FALSE(eventually([&] { return parts.size() > 1; }, std::chrono::milliseconds(200)));
    EXPECT_EQ(canvas.grab().toImage().pixelColor(320, 280), QColor(Qt::red));
}

TEST_F(PictureCanvasTest, TheStoreStaysWithinItsBoundHoweverOneLooksAround)
{
    openHuge();
    canvas.setScale(4);
    for (int i = 0; i < 6; ++i) {
        canvas.resize(1800 + i, 1400);
        for (int step = 0; step < 10; ++step)
            QTest::keyClick(&canvas, i % 2 == 0 ? Qt::Key_Right : Qt::Key_Down);
        ASSERT_TRUE(eventually([&] { return isSharp(); }));
        EXPECT_LE(tiles.cost(), PictureTiles::kCostLimit);
    }
}

TEST_F(PictureCanvasTest, CtrlAndWheelZoomAboutThePointer)
{
    openHuge();
    const QPointF pointer(150, 120);
    const QRectF before = canvas.pictureRect();
    QSignalSpy changed(&canvas, &PictureCanvas::scaleChanged);
    wheel(pointer, 240, Qt::ControlModifier);
    EXPECT_GT(canvas.scale(), 1);
    ASSERT_EQ(changed.size(), 1);
    const QRectF after = canvas.pictureRect();
    EXPECT_NEAR((pointer.x() - before.left()) / before.width(), (pointer.x() - after.left()) / after.width(),
                1e-6);
    wheel(pointer, -24000, Qt::ControlModifier);
    EXPECT_EQ(canvas.scale(), 0.25);
}

TEST_F(PictureCanvasTest, DraggingAndTheWheelMoveIt)
{
    openHuge();
    canvas.setScale(3);
    const QPointF before = canvas.pictureRect().topLeft();
    QTest::mousePress(&canvas, Qt::LeftButton, {}, QPoint(300, 300));
    QTest::mouseMove(&canvas, QPoint(330, 310));
    QTest::mouseRelease(&canvas, Qt::LeftButton, {}, QPoint(330, 310));
    EXPECT_EQ(canvas.pictureRect().topLeft() - before, QPointF(30, 10));
    wheel({300, 300}, -120, {});
    EXPECT_EQ(canvas.pictureRect().topLeft() - before, QPointF(30, -50));
    wheel({300, 300}, -120, Qt::ShiftModifier);
    EXPECT_EQ(canvas.pictureRect().topLeft() - before, QPointF(-30, -50));
}

TEST_F(PictureCanvasTest, AMissingPictureIsSaid)
{
    open(QStringLiteral("gone.png"), QSize(4000, 3000));
    ASSERT_TRUE(eventually([&] { return canvas.state() == AsyncFileImage::State::Unavailable; }));
    const auto* missing = canvas.findChild<EmptyState*>();
    EXPECT_TRUE(missing->isVisible());
    EXPECT_EQ(missing->accessibleName(), QStringLiteral("无法载入图片"));
    EXPECT_EQ(missing->accessibleDescription(), QStringLiteral("原始图片可能已被移动或删除"));
}

TEST_F(PictureCanvasTest, APictureLyingOnItsSideIsShownUpright)
{
    open(QStringLiteral("turned.jpg"), QSize(300, 400));                   // as it arrives
    canvas.setPicture(QStringLiteral("turned2.jpg"), {}, QSize(400, 300)); // as its header has it
    ASSERT_TRUE(eventually([&] { return canvas.state() == AsyncFileImage::State::Shown; }));
    EXPECT_EQ(canvas.pictureRect().size(), QSizeF(300, 400));
}

TEST_F(PictureCanvasTest, ATinyPictureIsNeitherEnlargedNorAskedForInParts)
{
    open(QStringLiteral("tiny.png"), QSize(16, 16));
    ASSERT_TRUE(eventually([&] { return canvas.state() == AsyncFileImage::State::Shown; }));
    EXPECT_EQ(canvas.pictureRect().size(), QSizeF(16, 16));
    canvas.setScale(4);
    EXPECT_TRUE(isSharp());
}

} // namespace
} // namespace tessary
