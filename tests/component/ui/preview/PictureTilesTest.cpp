#include "ui/preview/PictureTiles.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

constexpr qsizetype kPlenty = 1 << 24;
const QString kPath = QStringLiteral("a.png");

TEST(PictureTilesTest, TheLevelLosesNothing)
{
    const QRectF part(0, 0, 1000, 1000);
    EXPECT_EQ(PictureTiles::level(1.0, part, kPlenty), 0);
    EXPECT_EQ(PictureTiles::level(0.6, part, kPlenty), 0);
    EXPECT_EQ(PictureTiles::level(0.5, part, kPlenty), 1);
    EXPECT_EQ(PictureTiles::level(0.13, part, kPlenty), 2);
    EXPECT_EQ(PictureTiles::level(3, part, kPlenty), 0);
}

TEST(PictureTilesTest, ALevelWhoseSquaresWouldNotFitIsPassedOver)
{
    EXPECT_EQ(PictureTiles::level(1.0, QRectF(0, 0, 8000, 8000), kPlenty), 1);
}

TEST(PictureTilesTest, SquaresCoverThePartAndNothingElse)
{
    EXPECT_EQ(PictureTiles::squares(0, QRectF(0, 0, 512, 1024)), QRect(0, 0, 1, 2));
    EXPECT_EQ(PictureTiles::squares(0, QRectF(511, 512, 2, 1)), QRect(0, 1, 2, 1));
    EXPECT_EQ(PictureTiles::squares(2, QRectF(0, 0, 10000, 200)), QRect(0, 0, 5, 1));
}

TEST(PictureTilesTest, ThePartEndsWithThePicture)
{
    const QSize picture(10000, 200);
    EXPECT_EQ(PictureTiles::part(2, QRect(0, 0, 5, 1), picture), QRect(0, 0, 10000, 200));
    EXPECT_EQ(PictureTiles::part(2, QRect(4, 0, 1, 1), picture), QRect(8192, 0, 1808, 200));
    EXPECT_EQ(PictureTiles::sizeAt(2, QSize(1808, 201)), QSize(452, 51));
    EXPECT_EQ(PictureTiles::sizeAt(5, QSize(3, 3)), QSize(1, 1));
}

TEST(PictureTilesTest, WhatIsLoadedIsCutIntoItsSquares)
{
    PictureTiles tiles;
    QImage band(512 + 100, 80, QImage::Format_RGB32);
    band.fill(Qt::red);
    band.setPixelColor(512, 0, Qt::blue);
    tiles.insert(kPath, 1, QRect(3, 2, 2, 1), band);
    const QImage* first = tiles.tile(kPath, {1, QPoint(3, 2)});
    const QImage* second = tiles.tile(kPath, {1, QPoint(4, 2)});
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(first->size(), QSize(512, 80));
    EXPECT_EQ(second->size(), QSize(100, 80));
    EXPECT_EQ(second->pixelColor(0, 0), QColor(Qt::blue));
    EXPECT_EQ(tiles.tile(kPath, {0, QPoint(3, 2)}), nullptr);
    EXPECT_EQ(tiles.tile(QStringLiteral("b.png"), {1, QPoint(3, 2)}), nullptr);
}

TEST(PictureTilesTest, TheStoreIsBoundedAndKeepsWhatWasUsedLast)
{
    constexpr qsizetype kTile = 512 * 512 * 4;
    PictureTiles tiles(3 * kTile);
    QImage tile(512, 512, QImage::Format_RGB32);
    tile.fill(Qt::red);
    for (int column = 0; column < 3; ++column)
        tiles.insert(kPath, 0, QRect(column, 0, 1, 1), tile);
    EXPECT_NE(tiles.tile(kPath, {0, QPoint(0, 0)}), nullptr);
    tiles.insert(kPath, 0, QRect(3, 0, 1, 1), tile);
    EXPECT_LE(tiles.cost(), 3 * kTile);
    EXPECT_NE(tiles.tile(kPath, {0, QPoint(0, 0)}), nullptr);
    EXPECT_EQ(tiles.tile(kPath, {0, QPoint(1, 0)}), nullptr);
}

} // namespace
} // namespace tessary
