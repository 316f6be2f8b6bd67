#include "search/ScreenshotScope.h"
#include "tests/support/Await.h"
#include "ui/kit/Banner.h"
#include "ui/kit/Chip.h"
#include "ui/kit/ElidedLines.h"
#include "ui/kit/KeyCap.h"
#include "ui/kit/Menu.h"
#include "ui/kit/RoundedMask.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/SymbolButton.h"
#include "ui/kit/TextScale.h"
#include "ui/kit/Theme.h"
#include "ui/quicksearch/RowFade.h"
#include "ui/quicksearch/TileImages.h"

#include <QSignalSpy>
#include <QStringListModel>

namespace tessary {
namespace {

using testing::eventually;

TEST(ScopeSymbolTest, EveryScopeHasItsSymbol)
{
    for (const ScreenshotScope scope : kScreenshotScopes)
        EXPECT_TRUE(Symbol(systemImage(scope)).exists()) << rawValue(scope).toStdString();
}

TEST(ElidedLinesTest, AShortTextIsItself)
{
    const Theme theme;
    EXPECT_EQ(elidedLines(QStringLiteral("short"), theme.font(Theme::kBodySize), 300, 2),
              QStringLiteral("short"));
    EXPECT_EQ(elidedLines(QString(), theme.font(Theme::kBodySize), 300, 2), QString());
}

TEST(ElidedLinesTest, ALongTextIsCutAtTheEndOfTheLastLine)
{
    const Theme theme;
    const QFont font = theme.font(Theme::kBodySize);
    for (const QString& piece : {QStringLiteral("无空格的长句子"), QStringLiteral("words and more words ")}) {
        const QStringList lines = elidedLines(piece.repeated(300), font, 300, 2).split(QLatin1Char('\n'));
        ASSERT_EQ(lines.size(), 2);
        EXPECT_TRUE(lines.last().endsWith(QChar(0x2026)));
        for (const QString& line : lines)
            EXPECT_LE(QFontMetrics(font).horizontalAdvance(line), 300);
    }
}

TEST(BannerTest, TellsAllOfItsMessageWhereOnlyTwoLinesAreShown)
{
    const Theme theme;
    Banner banner(theme, QStringLiteral("exclamationmark.triangle.fill"));
    banner.resize(780, 10);
    const QString message = QStringLiteral("很长的消息，").repeated(60);
    banner.setMessage(message);
    EXPECT_EQ(banner.toolTip(), message);
    EXPECT_EQ(banner.accessibleName(), message);
    banner.setMessage({});
    EXPECT_TRUE(eventually([&] { return banner.isHidden(); }));
}

TEST(KeyCapTest, KeepsTheCharactersThatItDrawsAsSymbols)
{
    const Theme theme;
    const KeyCap cap(theme, QStringLiteral("⌘V"));
    EXPECT_EQ(cap.text(), QStringLiteral("⌘V"));
    EXPECT_EQ(cap.accessibleName(), QStringLiteral("⌘V"));
    EXPECT_GT(cap.sizeHint().width(), KeyCap(theme, QStringLiteral("V")).sizeHint().width());
}

TEST(ChipTest, ALongTextLeavesRoomForOthersAndItsButtonRemovesIt)
{
    const Theme theme;
    Chip chip(theme, QStringLiteral("very long ").repeated(50));
    EXPECT_LT(chip.sizeHint().width(), 300);
    QSignalSpy removed(&chip, &Chip::removed);
    chip.findChild<SymbolButton*>()->click();
    EXPECT_EQ(removed.size(), 1);
}

TEST(RoundedMaskTest, CutsTheCornersOnly)
{
    const QRegion mask = roundedMask(QSize(100, 60), 16);
    EXPECT_FALSE(mask.contains(QPoint(0, 0)));
    EXPECT_FALSE(mask.contains(QPoint(99, 59)));
    EXPECT_TRUE(mask.contains(QPoint(50, 0)));
    EXPECT_TRUE(mask.contains(QPoint(0, 30)));
    EXPECT_EQ(mask.boundingRect(), QRect(0, 0, 100, 60));
}

TEST(ThemeTest, WithoutMotionNothingTakesTime)
{
    Theme theme;
    EXPECT_EQ(theme.duration(Theme::kFade), Theme::kFade);
    theme.setReducedMotion(true);
    EXPECT_EQ(theme.duration(Theme::kFade).count(), 0);
}

TEST(ThemeTest, EveryChangeOfTheLooksIsTold)
{
    Theme theme;
    QSignalSpy changed(&theme, &Theme::changed);
    theme.setDark(true);
    theme.setAccent(QColor(Qt::red));
    theme.setTextScale(2);
    theme.setReducedMotion(true);
    EXPECT_EQ(changed.size(), 4);
    theme.setReducedMotion(true);
    EXPECT_EQ(changed.size(), 4);
    EXPECT_EQ(theme.fitting(36, 16), 52);
}

TEST(TextScaleTest, IsNotAppliedTwiceWhereTheResolutionHasIt)
{
    EXPECT_EQ(remainingTextScale(1, 1), 1);
    EXPECT_EQ(remainingTextScale(1.5, 1), 1.5);   // told, and nobody has done it
    EXPECT_EQ(remainingTextScale(1.5, 1.5), 1);   // 144 dots per inch
    EXPECT_EQ(remainingTextScale(1.25, 2.5), 1);  // windows twice as large, and text once more
    EXPECT_EQ(remainingTextScale(1.25, 2), 1.25); // windows twice as large only
    EXPECT_EQ(remainingTextScale(2, 1), 2);
    EXPECT_EQ(remainingTextScale(0.8, 1), 0.8);
    EXPECT_EQ(remainingTextScale(1, 2), 1);
}

TEST(MenuTest, ChoosingWithoutKeysOrPointerClosesItToo)
{
    const Theme theme;
    Menu menu(theme, false);
    QAction* action = menu.add({}, QStringLiteral("Choose"));
    menu.popup(QPoint(10, 10));
    ASSERT_TRUE(menu.isVisible());
    action->trigger();
    EXPECT_FALSE(menu.isVisible());
}

TEST(RowFadeTest, OneRowFadesInWhileTheOtherFadesOutAndJumpsWhereAsked)
{
    Theme theme;
    QStringListModel model({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    RowFade fade(theme);
    fade.moveTo(model.index(0), RowFade::Way::Jump);
    EXPECT_EQ(fade.of(model.index(0)), 1);
    fade.moveTo(model.index(1), RowFade::Way::Fade);
    EXPECT_LT(fade.of(model.index(1)), 1);
    EXPECT_EQ(fade.of(model.index(0)), 1 - fade.of(model.index(1)));
    EXPECT_TRUE(eventually([&] { return fade.of(model.index(1)) == 1; }));
    EXPECT_EQ(fade.of(model.index(0)), 0);
    theme.setReducedMotion(true);
    fade.moveTo(model.index(2), RowFade::Way::Fade);
    EXPECT_EQ(fade.of(model.index(2)), 1);
    EXPECT_EQ(fade.of(model.index(1)), 0);
    model.removeRow(2);
    EXPECT_EQ(fade.of(model.index(1)), 0);
}

class TileImagesTest : public ::testing::Test {
protected:
    QCoro::Task<QImage> load(QString path, int pixels)
    {
        requests.append(path);
        QImage image(pixels, pixels / 2, QImage::Format_RGB32);
        image.fill(Qt::red);
        co_return path.isEmpty() || path == QStringLiteral("broken") ? QImage() : image;
    }
    QPixmap tile(const QString& path) { return tiles.tile(path, 40, TileImages::Fit::Fill, 2); }

    QStringList requests;
    TileImages tiles{[this](QString path, int pixels) { return load(std::move(path), pixels); }};
};

TEST_F(TileImagesTest, APictureArrivesOnceAndFillsItsTile)
{
    QSignalSpy arrived(&tiles, &TileImages::arrived);
    EXPECT_TRUE(tile(QStringLiteral("a")).isNull());
    ASSERT_TRUE(eventually([&] { return arrived.size() == 1; }));
    const QPixmap shown = tile(QStringLiteral("a"));
    EXPECT_EQ(shown.deviceIndependentSize(), QSizeF(40, 40));
    EXPECT_EQ(shown.size(), QSize(80, 80));
    EXPECT_EQ(requests.size(), 1);
}

TEST_F(TileImagesTest, WhatCannotBeHadIsAskedForOnceUntilEverythingIsForgotten)
{
    QSignalSpy arrived(&tiles, &TileImages::arrived);
    EXPECT_TRUE(tile(QStringLiteral("broken")).isNull());
    ASSERT_TRUE(eventually([&] { return arrived.size() == 1; }));
    EXPECT_TRUE(tile(QStringLiteral("broken")).isNull());
    EXPECT_EQ(requests.size(), 1);
    tiles.clear();
    EXPECT_TRUE(tile(QStringLiteral("broken")).isNull());
    EXPECT_EQ(requests.size(), 2);
}

TEST_F(TileImagesTest, NoPathIsNoRequest)
{
    EXPECT_TRUE(tile(QString()).isNull());
    EXPECT_TRUE(requests.isEmpty());
}

} // namespace
} // namespace tessary
