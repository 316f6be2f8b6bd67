#include "ui/kit/Symbol.h"

#include <QImage>
#include <QPixmapCache>

#include <gtest/gtest.h>

namespace tessary {
namespace {

/// The sum of all opacities, as a measure of how much is drawn.
qint64 inkOf(const QPixmap& pixmap)
{
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    qint64 ink = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ink += qAlpha(image.pixel(x, y));
    return ink;
}

TEST(SymbolTest, DrawsEverySymbolThereIs)
{
    const QStringList names = Symbol::names();
    EXPECT_GT(names.size(), 50);
    for (const QString& name : names) {
        const QPixmap pixmap = Symbol(name).pixmap(16, Qt::black, 1);
        EXPECT_EQ(pixmap.size(), QSize(16, 16)) << name.toStdString();
        EXPECT_GT(inkOf(pixmap), 500) << name.toStdString();
    }
}

TEST(SymbolTest, TellsAMissingSymbol)
{
    EXPECT_TRUE(Symbol(QStringLiteral("photo")).exists());
    EXPECT_FALSE(Symbol(QStringLiteral("no.such.symbol")).exists());
    EXPECT_FALSE(Symbol(QString()).exists());
    EXPECT_TRUE(Symbol(QStringLiteral("no.such.symbol")).pixmap(16, Qt::black, 1).isNull());
    EXPECT_TRUE(Symbol(QStringLiteral("photo")).pixmap(0, Qt::black, 1).isNull());
}

TEST(SymbolTest, DrawsInTheColourAndItsOpacity)
{
    const QImage star = Symbol(QStringLiteral("star.fill")).pixmap(24, QColor(10, 200, 30), 1).toImage();
    EXPECT_EQ(star.pixelColor(12, 13), QColor(10, 200, 30));
    EXPECT_EQ(star.pixelColor(0, 0).alpha(), 0);
    const QImage faint =
        Symbol(QStringLiteral("star.fill")).pixmap(24, QColor(10, 200, 30, 100), 1).toImage();
    EXPECT_NEAR(faint.pixelColor(12, 13).alpha(), 100, 1);
}

TEST(SymbolTest, HasAsManyPixelsAsTheScreenShows)
{
    const QPixmap pixmap = Symbol(QStringLiteral("photo")).pixmap(20, Qt::black, 1.5);
    EXPECT_EQ(pixmap.size(), QSize(30, 30));
    EXPECT_EQ(pixmap.devicePixelRatio(), 1.5);
}

TEST(SymbolTest, DrawsThinnerStrokesFromTwentyEightPixelsOn)
{
    const Symbol symbol(QStringLiteral("rectangle"));
    const double small = double(inkOf(symbol.pixmap(27, Qt::black, 4))) / (27 * 27);
    const double large = double(inkOf(symbol.pixmap(28, Qt::black, 4))) / (28 * 28);
    EXPECT_NEAR(large / small, 1.3 / 1.75, 0.03);
}

TEST(SymbolTest, IsDrawnOnceForTheSameLook)
{
    QPixmapCache::clear();
    const Symbol symbol(QStringLiteral("photo"));
    const qint64 first = symbol.pixmap(16, Qt::black, 2).cacheKey();
    EXPECT_EQ(symbol.pixmap(16, Qt::black, 2).cacheKey(), first);
    EXPECT_NE(symbol.pixmap(16, Qt::white, 2).cacheKey(), first);
    EXPECT_NE(symbol.pixmap(16, Qt::black, 1).cacheKey(), first);
    EXPECT_NE(symbol.pixmap(17, Qt::black, 2).cacheKey(), first);
}

} // namespace
} // namespace tessary
