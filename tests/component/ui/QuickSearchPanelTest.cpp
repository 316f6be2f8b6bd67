#include "tests/component/ui/QuickSearchPanelFixture.h"

#include "ui/kit/Banner.h"
#include "ui/kit/Chip.h"
#include "ui/quicksearch/FactsPanel.h"
#include "ui/quicksearch/FilterMenu.h"
#include "ui/quicksearch/NarrowingChips.h"
#include "ui/quicksearch/QuickSearchResultRow.h"
#include "ui/quicksearch/ResultList.h"
#include "ui/quicksearch/SearchField.h"
#include "ui/quicksearch/TextPage.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>

namespace tessary {
namespace {

using namespace std::chrono_literals;
using testing::await;
using testing::eventually;

class QuickSearchPanelTest : public testing::QuickSearchPanelFixture {};

// --- the window --------------------------------------------------------------

TEST_F(QuickSearchPanelTest, OpensWithTheFieldFocusedAndEmpty)
{
    controller->model().setQuery(QStringLiteral("left over"));
    show();
    EXPECT_EQ(part<SearchField>().text(), QString());
    EXPECT_EQ(controller->model().query(), QString());
    EXPECT_EQ(QApplication::focusWidget(), &part<SearchField>());
    EXPECT_EQ(part<SearchField>().placeholderText(), QStringLiteral("搜索剪贴板文字、来源 App..."));
}

TEST_F(QuickSearchPanelTest, HasAFixedSizeAndTheWidthSettingStays)
{
    defaults.set(QStringLiteral("quickSearchWidth"), 900.0);
    show();
    KeyableSearchPanel& panel = controller->panel();
    EXPECT_EQ(panel.body().size(), QSize(780, 540));
    panel.resize(1000, 700);
    EXPECT_EQ(panel.body().size(), QSize(780, 540));
    EXPECT_EQ(runtime.settings().quickSearchWidth(), 780);
}

TEST_F(QuickSearchPanelTest, IsCentredWithItsTopAnEighthBelowTheTopOfTheUsableScreen)
{
    EXPECT_EQ(QuickSearchPanelController::place(QRect(0, 0, 1280, 800), QSize(780, 540)), QPoint(250, 96));
    EXPECT_EQ(QuickSearchPanelController::place(QRect(1280, 24, 1920, 1056), QSize(780, 540)),
              QPoint(1850, 24 + 126));
}

TEST_F(QuickSearchPanelTest, WithACompositorTheShadowTakesNoPointer)
{
    effects.setComposited(true);
    show();
    const int margin = controller->panel().margin();
    EXPECT_GT(margin, 0);
    EXPECT_EQ(effects.inputRegion, QRect(margin, margin, 780, 540));
    EXPECT_EQ(controller->panel().bodyGeometry().size(), QSize(780, 540));
    controller->hide();
    effects.setComposited(false);
    show();
    EXPECT_EQ(controller->panel().size(), QSize(780, 540));
}

TEST_F(QuickSearchPanelTest, LosingTheFocusHidesIt)
{
    show();
    other.show();
    other.activateWindow();
    EXPECT_TRUE(eventually([&] { return !controller->isVisible(); }));
    other.hide();
    addTexts({QStringLiteral("a"), QStringLiteral("b")});
    press(Qt::Key_Down);
    EXPECT_EQ(controller->model().selectedIndex(), 0); // nobody listens to keys any more
}

TEST_F(QuickSearchPanelTest, PinnedItStaysWhenItLosesTheFocus)
{
    show();
    runtime.settings().setQuickSearchPinned(true);
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_TRUE(controller->isVisible());
    EXPECT_TRUE(controller->panel().isVisible());
}

TEST_F(QuickSearchPanelTest, EscapeAndTheShortcutHideIt)
{
    show();
    press(Qt::Key_Escape);
    EXPECT_FALSE(controller->isVisible());
    show();
    runtime.toggleQuickSearch();
    EXPECT_FALSE(controller->isVisible());
}

TEST_F(QuickSearchPanelTest, WhatWasTypedMeanwhileIsDeliveredOnceItHasTheKeyboard)
{
    QObject::connect(&*controller, &QuickSearchPanelController::becameKey, &runtime,
                     &AppRuntime::panelBecameKey);
    QObject::connect(&*controller, &QuickSearchPanelController::gaveUpKeyboard, &runtime,
                     &AppRuntime::panelGaveUpKeyboard);
    show();
    EXPECT_TRUE(eventually([&] { return hotKeys.keyboardReleases() == 1; }));
    EXPECT_EQ(hotKeys.keyboardReceiver(), controller->panel().winId());
    press(Qt::Key_Escape);
    EXPECT_EQ(hotKeys.keyboardReleases(), 2);
}

// --- what it shows -----------------------------------------------------------

TEST_F(QuickSearchPanelTest, OperatorsAndScopeAreChipsThatCanBeRemoved)
{
    show();
    part<SearchField>().setText(QStringLiteral("foo tag:work"));
    controller->model().setScope(ScreenshotScope::Images);
    auto& chips = part<NarrowingChips>();
    ASSERT_EQ(chips.narrowings().size(), 2);
    EXPECT_TRUE(chips.isVisible());
    const auto remove = [&](const QString& text) {
        for (Chip* chip : chips.findChildren<Chip*>()) {
            if (chip->text() == text && !chip->isHidden())
                chip->findChild<QAbstractButton*>()->click();
        }
    };
    remove(QStringLiteral("标签：work"));
    EXPECT_EQ(part<SearchField>().text(), QStringLiteral("foo"));
    remove(QStringLiteral("图片"));
    EXPECT_EQ(controller->model().scope(), ScreenshotScope::All);
    EXPECT_FALSE(chips.isVisible());
}

TEST_F(QuickSearchPanelTest, AnErrorIsABannerUntilItIsClosed)
{
    show();
    runtime.reportFailure(QStringLiteral("很糟糕"));
    EXPECT_EQ(part<Banner>().message(), QStringLiteral("很糟糕"));
    part<Banner>().findChild<QAbstractButton*>()->click();
    EXPECT_EQ(runtime.lastError(), std::nullopt);
    EXPECT_EQ(part<Banner>().message(), QString());
}

TEST_F(QuickSearchPanelTest, ALibraryThatChangesShowsAtOnce)
{
    addTexts({QStringLiteral("first")});
    show();
    add(testing::textRecord(QStringLiteral("second"), 1'800'000'000));
    EXPECT_TRUE(eventually([&] { return results().size() == 2; }));
    EXPECT_EQ(part<ResultList>().model()->rowCount(), 2);
}

TEST_F(QuickSearchPanelTest, OfAHugeTextTheBeginningIsShownAndSaidToBeThat)
{
    addTexts({QStringLiteral("start ") + QString(3'000'000, QLatin1Char('x'))});
    show();
    auto& page = part<TextPage>();
    EXPECT_TRUE(page.shownText().startsWith(QStringLiteral("start xxx")));
    EXPECT_TRUE(eventually([&] { return page.shownText().contains(QStringLiteral("仅预览前")); }));
    EXPECT_LT(page.shownText().size(), 25'000);
    const qint64 before = pasteboard.changeCount();
    press(Qt::Key_C, Qt::ControlModifier);
    ASSERT_TRUE(eventually([&] { return pasteboard.changeCount() > before; }));
    const auto copied = await(pasteboard.data(pasteboard.changeCount(), PasteboardType::Text));
    EXPECT_EQ(copied.value_or(QByteArray()).size(), 3'000'006);
}

TEST_F(QuickSearchPanelTest, ATextThatJustFitsIsNotSaidToBeLonger)
{
    const QString fitting(kListTextLimit, QLatin1Char('x'));
    addTexts({fitting});
    show();
    EXPECT_TRUE(eventually([&] { return part<TextPage>().shownText() == fitting; }));
}

TEST_F(QuickSearchPanelTest, TheFilterMenuListsScopesAndSortsAndTicksThoseInForce)
{
    controller->model().setScope(ScreenshotScope::Today);
    FilterMenu menu(theme, false, ScreenshotScope::Today, ScreenshotSort::FileSize);
    QStringList ticked;
    QStringList all;
    for (const QAction* action : menu.actions()) {
        all.append(action->text());
        if (action->isChecked())
            ticked.append(action->text());
    }
    EXPECT_EQ(ticked, (QStringList{QStringLiteral("今天"), QStringLiteral("文件大小")}));
    EXPECT_EQ(all.first(), QStringLiteral("范围"));
    EXPECT_EQ(all.size(), 1 + 12 + 1 + 1 + 5);
}

// --- for everybody -----------------------------------------------------------

TEST_F(QuickSearchPanelTest, TabGoesThroughThePanelAsOneReads)
{
    addTexts({QStringLiteral("an item"), QStringLiteral("another item")});
    show();
    controller->model().setQuery(QStringLiteral("item after:2000-01-01 before:2099-01-01"));
    clock.advance(180ms);
    ASSERT_TRUE(eventually([&] { return results().size() == 2 && part<NarrowingChips>().isVisible(); }));
    QStringList places;
    QPoint last(-1, -1);
    QWidget* at = &part<SearchField>();
    do {
        const QPoint place = at->mapTo(&controller->panel(), QPoint(0, at->height() / 2));
        EXPECT_TRUE(place.y() > last.y() + 20 || place.x() > last.x()) << qPrintable(at->accessibleName());
        last = place;
        places.append(QLatin1String(at->metaObject()->className()));
        QTest::keyClick(controller->panel().windowHandle(), Qt::Key_Tab);
        at = QApplication::focusWidget();
        ASSERT_NE(at, nullptr);
    } while (at != &part<SearchField>() && places.size() < 20);
    EXPECT_EQ(places.size(), 8) << qPrintable(
        places.join(QLatin1Char(' '))); // field, 3 buttons, 2 chips, list, text
}

TEST_F(QuickSearchPanelTest, OnASmallScreenAllOfItIsThere)
{
    EXPECT_EQ(QuickSearchPanelController::place(QRect(0, 0, 1024, 600), QSize(780, 540)), QPoint(122, 60));
    EXPECT_EQ(QuickSearchPanelController::place(QRect(0, 28, 1024, 572), QSize(780, 540)), QPoint(122, 60));
    EXPECT_EQ(QuickSearchPanelController::place(QRect(0, 28, 800, 500), QSize(780, 500)), QPoint(10, 28));
}

TEST_F(QuickSearchPanelTest, LargerTextSharesTheRoomWithoutAnythingInTheWay)
{
    addTexts({QStringLiteral("an item"), QStringLiteral("another item")});
    show();
    for (const double scale : {1.5, 2.0, 3.0, 0.5, 1.0}) {
        theme.setTextScale(scale);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        EXPECT_EQ(controller->panel().body().size(), QSize(780, 540)) << scale;
        const QRect body(QPoint(), controller->panel().body().size());
        QList<QRect> seen;
        const QList<QWidget*> parts = controller->panel().body().findChildren<QWidget*>();
        for (const QWidget* each : parts) {
            const bool holdsText =
                qobject_cast<const QLabel*>(each) || qobject_cast<const QLineEdit*>(each) ||
                qobject_cast<const QAbstractButton*>(each) || qobject_cast<const ResultList*>(each) ||
                qobject_cast<const TextPage*>(each) || qobject_cast<const FactsPanel*>(each);
            if (!holdsText || !each->isVisible())
                continue;
            const QRect place(each->mapTo(&controller->panel().body(), QPoint()), each->size());
            EXPECT_TRUE(body.contains(place)) << scale << ' ' << each->metaObject()->className();
            for (const QRect& before : seen)
                EXPECT_FALSE(place.intersects(before)) << scale << ' ' << each->metaObject()->className();
            if (qobject_cast<const QLabel*>(each)) {
                EXPECT_GE(each->width(), each->sizeHint().width()) << scale;
            }
            seen.append(place);
        }
        EXPECT_GE(part<ResultList>().height(), QuickSearchResultRow::height(theme)) << scale;
    }
}

} // namespace
} // namespace tessary
