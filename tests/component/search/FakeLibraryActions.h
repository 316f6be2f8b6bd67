#pragma once

#include "platform/testing/FakeClock.h"
#include "search/LibraryActions.h"
#include "store/StoreError.h"

#include <algorithm>
#include <coroutine>
#include <deque>

namespace tessary::testing {

/// A library that answers when the test says so, and writes down what it is asked.
class FakeLibraryActions : public LibraryActions {
public:
    struct Search {
        ListRequest request;
        std::stop_token stop;
        std::coroutine_handle<> waiting;
        QList<ScreenshotRecord> answer;
        std::optional<StoreError> error;
        bool isAnswered = false;
    };

    [[nodiscard]] Clock& clock() override { return time; }
    [[nodiscard]] QCoro::Task<QList<ScreenshotRecord>> search(ListRequest request,
                                                              std::stop_token stop) override
    {
        searches.push_back({request, stop, nullptr, {}, std::nullopt, false});
        Search& mine = searches.back();
        co_await Gate{mine.waiting};
        if (mine.error)
            throw *mine.error;
        co_return mine.answer;
    }
    [[nodiscard]] QCoro::Task<LibraryFacets> facets() override
    {
        ++facetLoads;
        if (areFacetsGated)
            co_await Gate{facetsWaiting};
        if (failure)
            throw *failure;
        co_return LibraryFacets(currentFacets); // QCoro 0.8 moves even from what it is given by name
    }
    [[nodiscard]] QCoro::Task<> copy(ScreenshotRecord record, bool paste) override
    {
        return act((paste ? QStringLiteral("paste ") : QStringLiteral("copy ")) + record.filename);
    }
    [[nodiscard]] QCoro::Task<> toggleFavorite(ScreenshotRecord record) override
    {
        return act(QStringLiteral("favorite ") + record.filename);
    }
    [[nodiscard]] QCoro::Task<> togglePinned(ScreenshotRecord record) override
    {
        return act(QStringLiteral("pin ") + record.filename);
    }
    [[nodiscard]] QCoro::Task<> moveToTrash(ScreenshotRecord record) override
    {
        return act(QStringLiteral("trash ") + record.filename);
    }
    void reportFailure(const QString& message) override { failures.append(message); }

    /// Answers the search, the first being 0, with its page of the rows. The asker goes on at once.
    void answer(size_t index, const QList<ScreenshotRecord>& allRows)
    {
        Search& search = searches.at(index);
        search.answer = allRows.mid(search.request.offset, search.request.limit);
        resume(search);
    }
    void fail(size_t index)
    {
        Search& search = searches.at(index);
        search.error.emplace(StoreError::Case::Prepare, QStringLiteral("broken"));
        resume(search);
    }
    /// Lets everything that still waits or sleeps end, as the end of a test has to.
    void endAll()
    {
        // Each looked up anew: who is resumed may search again.
        const auto firstWaiting = [this] {
            return std::ranges::find_if(searches, [](const Search& search) { return bool(search.waiting); });
        };
        for (auto found = firstWaiting(); found != searches.end(); found = firstWaiting())
            resume(*found);
        areFacetsGated = false;
        if (facetsWaiting)
            answerFacets();
        time.advance(std::chrono::seconds(10));
    }
    void answerFacets() { std::exchange(facetsWaiting, nullptr).resume(); }

    FakeClock time;
    std::deque<Search> searches; // a deque: what waits in one stays where it is
    bool areFacetsGated = false;
    std::coroutine_handle<> facetsWaiting;
    int facetLoads = 0;
    LibraryFacets currentFacets;
    std::optional<StoreError> failure; ///< Of facets and actions.
    QStringList actions;
    QStringList failures;

private:
    struct Gate {
        std::coroutine_handle<>& place;
        [[nodiscard]] bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<> handle) { place = handle; }
        void await_resume() const noexcept {}
    };

    static void resume(Search& search)
    {
        search.isAnswered = true;
        std::exchange(search.waiting, nullptr).resume();
    }
    QCoro::Task<> act(QString description)
    {
        actions.append(description);
        if (failure)
            throw *failure;
        co_return;
    }
};

} // namespace tessary::testing
