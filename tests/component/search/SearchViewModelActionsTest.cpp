#include "tests/component/search/SearchViewModelFixture.h"

namespace tessary {
namespace {

using namespace std::chrono_literals;

class SearchViewModelActionsTest : public testing::SearchViewModelFixture {};

TEST_F(SearchViewModelActionsTest, WithoutASelectedItemNothingIsDone)
{
    model->useSelected();
    model->favoriteSelected();
    model->pinSelected();
    model->deleteSelected();
    EXPECT_TRUE(library.actions.isEmpty());
}

TEST_F(SearchViewModelActionsTest, TheSelectedItemIsUsedPastedUnlessOnlyCopied)
{
    show(rows(3));
    model->setSelectedIndex(1);
    model->useSelected();
    model->useSelected(true);
    model->useSelected(false);
    model->favoriteSelected();
    model->pinSelected();
    model->deleteSelected();
    EXPECT_EQ(library.actions.join(u',').toStdString(),
              "paste row1,paste row1,copy row1,favorite row1,pin row1,trash row1");
    EXPECT_EQ(model->results().size(), 3);
    EXPECT_TRUE(library.failures.isEmpty());
}

TEST_F(SearchViewModelActionsTest, WhatFailsIsTold)
{
    show(rows(1));
    library.failure.emplace(StoreError::Case::Execute, QStringLiteral("full"));
    model->useSelected();
    model->deleteSelected();
    EXPECT_EQ(library.failures, QStringList(2, QStringLiteral("数据库操作失败：full")));
}

TEST_F(SearchViewModelActionsTest, FacetsThatFailAreToldAndTheOldOnesStay)
{
    library.currentFacets.sourceApps = {QStringLiteral("Mail")};
    testing::await(model->refreshFacets());
    library.failure.emplace(StoreError::Case::Prepare, QStringLiteral("broken"));
    testing::await(model->refreshFacets());
    EXPECT_EQ(library.failures, QStringList{QStringLiteral("数据库查询失败：broken")});
    EXPECT_EQ(model->sourceApps(), QStringList{QStringLiteral("Mail")});
}

TEST_F(SearchViewModelActionsTest, FacetsAskedForWhileTheyLoadAreLoadedOnceMore)
{
    library.areFacetsGated = true;
    const int before = library.facetLoads;
    for (int i = 0; i < 5; ++i)
        Q_EMIT library.libraryChanged();
    EXPECT_EQ(library.facetLoads, before + 1);
    library.answerFacets();
    EXPECT_EQ(library.facetLoads, before + 2);
    library.currentFacets.tags = {QStringLiteral("new")};
    library.answerFacets();
    EXPECT_EQ(library.facetLoads, before + 2);
    EXPECT_EQ(model->availableTags(), QStringList{QStringLiteral("new")});
}

TEST_F(SearchViewModelActionsTest, AModelThatGoesStopsItsQueriesAndHearsNothingMore)
{
    library.areFacetsGated = true;
    show(rows(250));
    const QCoro::Task<> page = model->loadMore();
    const QCoro::Task<> facets = model->refreshFacets();
    model.reset();
    EXPECT_TRUE(isStopped(1));
    library.answer(1, rows(250));
    library.answerFacets();
    Q_EMIT library.libraryChanged();
    EXPECT_EQ(library.searches.size(), 2U);
    EXPECT_TRUE(library.failures.isEmpty());
}

TEST_F(SearchViewModelActionsTest, AModelThatGoesDuringTheFirstPageOrThePauseHearsNothingMore)
{
    model->scheduleRefresh(Model::Refresh::Immediate);
    model->setQuery(QStringLiteral("typed"));
    auto other = std::make_unique<Model>(library);
    other->scheduleRefresh(Model::Refresh::Immediate);
    model.reset();
    other.reset();
    library.answer(0, rows(1));
    library.fail(1);
    library.time.advance(1s);
    EXPECT_EQ(library.searches.size(), 2U);
    EXPECT_TRUE(library.failures.isEmpty());
}

TEST_F(SearchViewModelActionsTest, ASlotMayDestroyTheModel)
{
    QObject::connect(model.get(), &Model::resultsReset, &library, [this] { model.reset(); });
    show(rows(101));
    EXPECT_EQ(model, nullptr);
    model = std::make_unique<Model>(library);
    QObject::connect(model.get(), &Model::isSearchingChanged, &library, [this] { model.reset(); });
    model->scheduleRefresh(Model::Refresh::Immediate);
    EXPECT_EQ(model, nullptr);
    EXPECT_EQ(library.searches.size(), 1U);
    model = std::make_unique<Model>(library);
    QObject::connect(model.get(), &Model::isSearchingChanged, &library, [this] { model.reset(); });
    model->setScope(ScreenshotScope::Images);
    EXPECT_EQ(model, nullptr);
    model = std::make_unique<Model>(library);
    QObject::connect(model.get(), &Model::isSearchingChanged, &library, [this] { model.reset(); });
    Q_EMIT library.libraryChanged();
    EXPECT_EQ(model, nullptr);
    EXPECT_EQ(library.searches.size(), 1U);
}

} // namespace
} // namespace tessary
