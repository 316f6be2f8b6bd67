#include "tests/component/search/SearchViewModelFixture.h"

namespace tessary {
namespace {

using namespace std::chrono_literals;

class SearchViewModelTest : public testing::SearchViewModelFixture {
protected:
    using Refresh = Model::Refresh;
};

TEST_F(SearchViewModelTest, BeginsEmptyAndLoadsTheFacetsOnly)
{
    EXPECT_EQ(model->query(), QString());
    EXPECT_EQ(model->scope(), ScreenshotScope::All);
    EXPECT_EQ(model->sort(), ScreenshotSort::Relevance);
    EXPECT_TRUE(model->results().isEmpty());
    EXPECT_EQ(model->selectedIndex(), 0);
    EXPECT_FALSE(model->selectedRecord());
    EXPECT_FALSE(model->isSearching());
    EXPECT_FALSE(model->hasMore());
    EXPECT_TRUE(library.searches.empty());
    EXPECT_EQ(library.facetLoads, 1);
}

TEST_F(SearchViewModelTest, TypingFastAsksOnceForTheWholeText)
{
    for (const char* text : {"h", "he", "hel", "hell", "hello"}) {
        model->setQuery(QLatin1String(text));
        library.time.advance(179ms);
    }
    EXPECT_TRUE(library.searches.empty());
    EXPECT_FALSE(model->isSearching());
    library.time.advance(1ms);
    ASSERT_EQ(library.searches.size(), 1U);
    EXPECT_EQ(asked(0), "hello");
    EXPECT_TRUE(model->isSearching());
    library.answer(0, rows(2));
    EXPECT_FALSE(model->isSearching());
    EXPECT_EQ(model->results().size(), 2);
    library.time.advance(10s);
    EXPECT_EQ(library.searches.size(), 1U);
}

TEST_F(SearchViewModelTest, AsksForAPageAndOneMoreWithCutContents)
{
    library.time.setNow(Date{12345.5});
    model->setScope(ScreenshotScope::Images);
    ASSERT_EQ(library.searches.size(), 1U);
    const ListRequest& request = library.searches.at(0).request;
    EXPECT_EQ(request.limit, 101);
    EXPECT_EQ(request.offset, 0);
    EXPECT_EQ(request.scope, ScreenshotScope::Images);
    EXPECT_EQ(request.sort, ScreenshotSort::Relevance);
    EXPECT_EQ(request.now, Date{12345.5});
    EXPECT_TRUE(request.calendar.timeZone.isValid());
    EXPECT_EQ(request.maximumTextLength, kListTextLimit);
}

TEST_F(SearchViewModelTest, ExactlyOnePageHasNoMoreAndOneRowMoreHas)
{
    show(rows(100));
    EXPECT_FALSE(model->hasMore());
    EXPECT_EQ(model->results().size(), 100);
    show(rows(101));
    EXPECT_TRUE(model->hasMore());
    EXPECT_EQ(model->results().size(), 100);
}

TEST_F(SearchViewModelTest, AShorterListSelectsItsLastRow)
{
    show(rows(50));
    model->setSelectedIndex(10);
    takeSignals();
    show(rows(3));
    EXPECT_EQ(model->selectedIndex(), 2);
    EXPECT_EQ(takeSignals(), "searching reset selected searching");
    show({});
    EXPECT_EQ(model->selectedIndex(), 0);
    EXPECT_FALSE(model->selectedRecord());
}

TEST_F(SearchViewModelTest, TheSelectionStaysWhereItWasWhenItCan)
{
    show(rows(50));
    model->setSelectedIndex(10);
    takeSignals();
    show(rows(20, QStringLiteral("other")));
    EXPECT_EQ(model->selectedIndex(), 10);
    EXPECT_EQ(model->selectedRecord()->filename, QStringLiteral("other10"));
    EXPECT_EQ(takeSignals(), "searching reset searching");
}

TEST_F(SearchViewModelTest, TheSameRowsAgainResetNothing)
{
    const QList<ScreenshotRecord> same = rows(5);
    show(same);
    takeSignals();
    show(same);
    EXPECT_EQ(takeSignals(), "searching searching");
}

TEST_F(SearchViewModelTest, MovingStopsAtTheFirstAndTheLastRow)
{
    model->moveSelection(1);
    EXPECT_EQ(model->selectedIndex(), 0);
    show(rows(10));
    model->moveSelection(-1);
    EXPECT_EQ(model->selectedIndex(), 0);
    model->moveSelection(7);
    EXPECT_EQ(model->selectedIndex(), 7);
    model->moveSelection(5);
    EXPECT_EQ(model->selectedIndex(), 9);
    model->moveSelection(std::numeric_limits<int>::max());
    EXPECT_EQ(model->selectedIndex(), 9);
    model->moveSelection(std::numeric_limits<int>::min());
    EXPECT_EQ(model->selectedIndex(), 0);
}

TEST_F(SearchViewModelTest, ANewScopeEndsThePauseAndAsksAtOnce)
{
    model->setQuery(QStringLiteral("typed"));
    library.time.advance(100ms);
    model->setScope(ScreenshotScope::Favorites);
    ASSERT_EQ(library.searches.size(), 1U);
    EXPECT_EQ(asked(0), "typed");
    EXPECT_EQ(library.searches.at(0).request.scope, ScreenshotScope::Favorites);
    library.time.advance(1s);
    EXPECT_EQ(library.searches.size(), 1U);
    EXPECT_EQ(takeSignals(), "query searching scope");
}

TEST_F(SearchViewModelTest, ANewOrderAsksAtOnceAndTheSameOneDoesNot)
{
    model->setSort(ScreenshotSort::Relevance);
    model->setScope(ScreenshotScope::All);
    model->setQuery(QString());
    EXPECT_TRUE(library.searches.empty());
    EXPECT_EQ(library.time.sleeping(), 0);
    model->setSort(ScreenshotSort::Oldest);
    ASSERT_EQ(library.searches.size(), 1U);
    EXPECT_EQ(library.searches.at(0).request.sort, ScreenshotSort::Oldest);
}

TEST_F(SearchViewModelTest, ANewerRefreshStopsTheOlderQueryWhoseAnswerNobodySees)
{
    model->setScope(ScreenshotScope::Images);
    model->setScope(ScreenshotScope::TextItems);
    ASSERT_EQ(library.searches.size(), 2U);
    EXPECT_TRUE(isStopped(0));
    EXPECT_FALSE(isStopped(1));
    library.answer(0, rows(7));
    EXPECT_TRUE(model->results().isEmpty());
    EXPECT_TRUE(model->isSearching());
    library.answer(1, rows(3));
    EXPECT_EQ(model->results().size(), 3);
    EXPECT_FALSE(model->isSearching());
}

TEST_F(SearchViewModelTest, AnAnswerThatComesAfterTheNewerOneChangesNothing)
{
    model->setScope(ScreenshotScope::Images);
    model->setScope(ScreenshotScope::TextItems);
    library.answer(1, rows(3));
    takeSignals();
    library.answer(0, rows(7));
    EXPECT_EQ(model->results().size(), 3);
    EXPECT_EQ(takeSignals(), "");
}

TEST_F(SearchViewModelTest, TypingStopsTheRunningQueryAtOnce)
{
    model->scheduleRefresh(Refresh::Immediate);
    model->setQuery(QStringLiteral("x"));
    EXPECT_TRUE(isStopped(0));
    library.fail(0); // an error of a stopped query means nothing
    EXPECT_TRUE(library.failures.isEmpty());
    EXPECT_TRUE(model->isSearching());
    library.time.advance(180ms);
    library.answer(1, rows(1));
    EXPECT_FALSE(model->isSearching());
    EXPECT_EQ(model->results().size(), 1);
}

TEST_F(SearchViewModelTest, AFailureIsToldAndTheRowsStay)
{
    show(rows(101));
    takeSignals();
    model->scheduleRefresh(Refresh::Immediate);
    library.fail(1);
    EXPECT_EQ(library.failures, QStringList{QStringLiteral("数据库查询失败：broken")});
    EXPECT_EQ(model->results().size(), 100);
    EXPECT_FALSE(model->isSearching());
    EXPECT_EQ(takeSignals(), "searching more searching");
    show(rows(2));
    EXPECT_EQ(model->results().size(), 2);
}

TEST_F(SearchViewModelTest, AChangedLibraryIsAskedAtOnceForRowsAndFacets)
{
    model->setQuery(QStringLiteral("typed"));
    library.currentFacets = {{QStringLiteral("Mail")}, {QStringLiteral("work")}};
    Q_EMIT library.libraryChanged();
    ASSERT_EQ(library.searches.size(), 1U);
    EXPECT_EQ(asked(0), "typed");
    EXPECT_EQ(library.facetLoads, 2);
    EXPECT_EQ(model->sourceApps(), QStringList{QStringLiteral("Mail")});
    EXPECT_EQ(model->availableTags(), QStringList{QStringLiteral("work")});
    Q_EMIT library.libraryChanged();
    EXPECT_TRUE(isStopped(0));
    EXPECT_EQ(takeSignals(), "query searching facets");
}

TEST_F(SearchViewModelTest, ARefreshThatIsAwaitedEndsWithItsAnswer)
{
    QCoro::Task<> refresh = model->refresh();
    EXPECT_FALSE(refresh.isReady());
    library.answer(0, rows(4));
    EXPECT_TRUE(refresh.isReady());
    EXPECT_EQ(model->results().size(), 4);
}

TEST_F(SearchViewModelTest, ASlotMayAskAgainWhileAnAnswerIsShown)
{
    QObject::connect(model.get(), &Model::resultsReset, model.get(), [this] {
        if (model->results().size() == 5)
            model->setScope(ScreenshotScope::Images);
    });
    show(rows(5));
    ASSERT_EQ(library.searches.size(), 2U);
    EXPECT_TRUE(model->isSearching());
    library.answer(1, rows(1));
    EXPECT_FALSE(model->isSearching());
    EXPECT_EQ(model->results().size(), 1);
}

} // namespace
} // namespace tessary
