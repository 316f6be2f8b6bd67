#include "ui/preview/CanvasGeometry.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

CanvasGeometry geometry(const QSize& picture, double devicePixelRatio = 1)
{
    CanvasGeometry geometry;
    geometry.setCanvas(QSize(648, 548), devicePixelRatio);
    geometry.setPicture(picture);
    return geometry;
}

TEST(CanvasGeometryTest, ALargePictureIsFittedWithinTheInset)
{
    EXPECT_EQ(geometry(QSize(6000, 1000)).pictureRect(), QRectF(24, 224, 600, 100));
    EXPECT_EQ(geometry(QSize(1000, 5000)).pictureRect(), QRectF(274, 24, 100, 500));
}

TEST(CanvasGeometryTest, ASmallOneIsNotEnlargedBeyondItsPixels)
{
    EXPECT_EQ(geometry(QSize(16, 16)).fittedSize(), QSizeF(16, 16));
    EXPECT_EQ(geometry(QSize(16, 16), 2).fittedSize(), QSizeF(8, 8));
    EXPECT_EQ(geometry(QSize(16, 16), 2).magnification(), 1);
}

TEST(CanvasGeometryTest, WhatLiesUnderThePointerStaysThere)
{
    CanvasGeometry zoomed = geometry(QSize(6000, 5000));
    const QPointF pointer(200, 300);
    const auto under = [&] {
        const QRectF place = zoomed.pictureRect();
        return QPointF((pointer.x() - place.left()) / place.width(),
                       (pointer.y() - place.top()) / place.height());
    };
    const QPointF before = under();
    for (const double scale : {1.7, 3.1, 4.0, 2.2}) {
        zoomed.setScale(scale, pointer);
        EXPECT_NEAR(under().x(), before.x(), 1e-9);
        EXPECT_NEAR(under().y(), before.y(), 1e-9);
    }
    zoomed.setScale(1, pointer);
    EXPECT_EQ(zoomed.pictureRect().center(), QPointF(324, 274));
}

TEST(CanvasGeometryTest, ItMovesAsFarAsItsEdgesAndNotAtAllWhileItFits)
{
    CanvasGeometry moved = geometry(QSize(6000, 5000));
    moved.moveBy({100, 100});
    EXPECT_EQ(moved.pictureRect().center(), QPointF(324, 274));
    moved.setScale(2, {324, 274});
    moved.moveBy({10'000, -10'000});
    EXPECT_EQ(moved.pictureRect().left(), CanvasGeometry::kInset);
    EXPECT_EQ(moved.pictureRect().bottom(), 548 - CanvasGeometry::kInset);
}

TEST(CanvasGeometryTest, ThePartInViewIsInThePicturesOwnPixels)
{
    CanvasGeometry zoomed = geometry(QSize(6000, 5000));
    EXPECT_EQ(zoomed.visiblePart(), QRectF(0, 0, 6000, 5000));
    zoomed.setScale(4, {324, 274});
    const QRectF part = zoomed.visiblePart();
    EXPECT_NEAR(part.width(), 648 * 10 / 4.0, 1e-6);
    EXPECT_NEAR(part.center().x(), 3000, 1e-6);
    EXPECT_NEAR(part.center().y(), 2500, 1e-6);
}

TEST(CanvasGeometryTest, NothingIsWrongWithoutAPictureOrRoom)
{
    CanvasGeometry empty;
    empty.setScale(4, {1, 1});
    EXPECT_TRUE(empty.visiblePart().isEmpty());
    empty.setPicture(QSize(10000, 200));
    empty.setCanvas(QSize(1, 1), 1);
    EXPECT_GE(empty.pictureRect().width(), 1);
}

} // namespace
} // namespace tessary
