#include "tests/component/search/SearchViewModelFixture.h"

namespace tessary {
namespace {

using namespace std::chrono_literals;

class SearchViewModelPagingTest : public testing::SearchViewModelFixture {};

TEST_F(SearchViewModelPagingTest, AppendsTheNextPagesUntilThereAreNoMore)
{
    const QList<ScreenshotRecord> all = rows(250);
    show(all);
    takeSignals();
    const QCoro::Task<> second = model->loadMore();
    ASSERT_EQ(library.searches.size(), 2U);
    EXPECT_EQ(library.searches.at(1).request.offset, 100);
    EXPECT_EQ(library.searches.at(1).request.limit, 101);
    EXPECT_FALSE(model->isSearching());
    library.answer(1, all);
    EXPECT_EQ(takeSignals(), "appended 100-199");
    EXPECT_TRUE(model->hasMore());
    const QCoro::Task<> third = model->loadMore();
    library.answer(2, all);
    EXPECT_EQ(takeSignals(), "appended 200-249 more");
    EXPECT_EQ(model->results(), all);
    const QCoro::Task<> none = model->loadMore();
    EXPECT_EQ(library.searches.size(), 3U);
}

TEST_F(SearchViewModelPagingTest, OnlyOnePageIsLoadedAtATime)
{
    show(rows(250));
    const QCoro::Task<> one = model->loadMore();
    const QCoro::Task<> two = model->loadMore();
    EXPECT_EQ(library.searches.size(), 2U);
    library.answer(1, rows(250));
    EXPECT_EQ(model->results().size(), 200);
}

TEST_F(SearchViewModelPagingTest, APageOfOtherRowsIsNotAppended)
{
    show(rows(250));
    const QCoro::Task<> page = model->loadMore();
    model->setScope(ScreenshotScope::Images);
    EXPECT_TRUE(isStopped(1));
    library.answer(1, rows(250));
    EXPECT_EQ(model->results().size(), 100);
    library.answer(2, rows(120, QStringLiteral("picture")));
    EXPECT_EQ(model->results().size(), 100);
    EXPECT_EQ(model->results().first().filename, QStringLiteral("picture0"));
    const QCoro::Task<> next = model->loadMore();
    library.answer(3, rows(120, QStringLiteral("picture")));
    EXPECT_EQ(model->results().size(), 120);
}

TEST_F(SearchViewModelPagingTest, APageThatComesAfterTheNewRowsIsNotAppended)
{
    show(rows(250));
    const QCoro::Task<> page = model->loadMore();
    model->setScope(ScreenshotScope::Images);
    library.answer(2, rows(250, QStringLiteral("picture")));
    library.answer(1, rows(250));
    EXPECT_EQ(model->results().size(), 100);
}

TEST_F(SearchViewModelPagingTest, NothingIsLoadedForRowsThatAreAboutToBeReplaced)
{
    show(rows(250));
    model->setQuery(QStringLiteral("typed"));
    const QCoro::Task<> duringPause = model->loadMore();
    EXPECT_EQ(library.searches.size(), 1U);
    library.time.advance(180ms);
    const QCoro::Task<> duringQuery = model->loadMore();
    EXPECT_EQ(library.searches.size(), 2U);
    library.fail(1);
    const QCoro::Task<> afterFailure = model->loadMore();
    EXPECT_EQ(library.searches.size(), 2U);
}

TEST_F(SearchViewModelPagingTest, AFailedPageIsToldAndMayBeAskedForAgain)
{
    show(rows(150));
    const QCoro::Task<> failing = model->loadMore();
    library.fail(1);
    EXPECT_EQ(library.failures.size(), 1);
    EXPECT_TRUE(model->hasMore());
    EXPECT_EQ(model->results().size(), 100);
    const QCoro::Task<> again = model->loadMore();
    library.answer(2, rows(150));
    EXPECT_EQ(model->results().size(), 150);
}

TEST_F(SearchViewModelPagingTest, RowsThatHaveGoneMeanwhileLeaveNoMore)
{
    show(rows(150));
    takeSignals();
    const QCoro::Task<> page = model->loadMore();
    library.answer(1, rows(90));
    EXPECT_EQ(model->results().size(), 100);
    EXPECT_EQ(takeSignals(), "more");
}

} // namespace
} // namespace tessary
