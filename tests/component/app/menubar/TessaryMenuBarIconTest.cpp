#include "app/menubar/TessaryMenuBarIcon.h"

#include "ui/kit/Symbol.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

using ColourScheme = DesktopAppearance::ColourScheme;

QImage imageOf(const QIcon& icon, int size)
{
    return icon.pixmap(QSize(size, size)).toImage();
}

TEST(TessaryMenuBarIconTest, ComesInTheSizesThatPanelsAskFor)
{
    const QList<QSize> sizes = TessaryMenuBarIcon().image(ColourScheme::Light).availableSizes();
    for (const int size : {16, 22, 24, 32, 44, 48})
        EXPECT_TRUE(sizes.contains(QSize(size, size))) << size;
}

TEST(TessaryMenuBarIconTest, HasOneColourAndPalerSockets)
{
    for (const ColourScheme scheme : {ColourScheme::Light, ColourScheme::Dark, ColourScheme::Unknown}) {
        const QImage image = imageOf(TessaryMenuBarIcon().image(scheme), 48);
        const QColor colour = TessaryMenuBarIcon::colour(scheme);
        EXPECT_EQ(image.pixelColor(24, 32), colour);
        const QColor socket = image.pixelColor(9, 40);
        EXPECT_NEAR(socket.alphaF(), 0.36, 0.02);
        EXPECT_NEAR(socket.redF(), colour.redF(), 0.02);
        EXPECT_NEAR(socket.greenF(), colour.greenF(), 0.02);
        EXPECT_NEAR(socket.blueF(), colour.blueF(), 0.02);
        EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    }
}

TEST(TessaryMenuBarIconTest, IsAClipboardWhereTheMarkIsMissing)
{
    const QIcon icon = TessaryMenuBarIcon(QStringLiteral("no such drawing")).image(ColourScheme::Light);
    const QPixmap clipboard = Symbol(QStringLiteral("doc.on.clipboard.fill"))
                                  .pixmap(32, TessaryMenuBarIcon::colour(ColourScheme::Light), 1);
    ASSERT_FALSE(clipboard.isNull());
    EXPECT_EQ(imageOf(icon, 32), clipboard.toImage());
}

} // namespace
} // namespace tessary
