#pragma once

#include "search/ScreenshotSearchViewModel.h"
#include "tests/component/search/FakeLibraryActions.h"
#include "tests/support/Await.h"
#include "tests/support/RecordSamples.h"

namespace tessary::testing {

/// A model, its library, and a log of the model's signals.
class SearchViewModelFixture : public ::testing::Test {
protected:
    using Model = ScreenshotSearchViewModel;

    SearchViewModelFixture()
    {
        log(&Model::queryChanged, "query");
        log(&Model::scopeChanged, "scope");
        log(&Model::sortChanged, "sort");
        log(&Model::resultsReset, "reset");
        log(&Model::selectedIndexChanged, "selected");
        log(&Model::isSearchingChanged, "searching");
        log(&Model::hasMoreChanged, "more");
        log(&Model::facetsChanged, "facets");
        QObject::connect(model.get(), &Model::resultsAppended, model.get(), [this](int first, int last) {
            signalLog.append(QStringLiteral("appended %1-%2").arg(first).arg(last));
        });
    }

    ~SearchViewModelFixture() override
    {
        model.reset();
        library.endAll();
    }

    /// That many different rows.
    [[nodiscard]] static QList<ScreenshotRecord> rows(int count, const QString& name = QStringLiteral("row"))
    {
        QList<ScreenshotRecord> rows;
        for (int i = 0; i < count; ++i)
            rows.append(textRecord(name + QString::number(i)));
        return rows;
    }
    /// Shows the rows as a refresh does.
    void show(const QList<ScreenshotRecord>& allRows)
    {
        model->scheduleRefresh(Model::Refresh::Immediate);
        library.answer(library.searches.size() - 1, allRows);
    }
    std::string takeSignals() { return std::exchange(signalLog, {}).join(u' ').toStdString(); }
    /// What was typed at the search, the first being 0.
    [[nodiscard]] std::string asked(size_t index) const
    {
        return library.searches.at(index).request.rawQuery.toStdString();
    }
    [[nodiscard]] bool isStopped(size_t index) const
    {
        return library.searches.at(index).stop.stop_requested();
    }

    FakeLibraryActions library;
    QStringList signalLog;
    std::unique_ptr<Model> model = std::make_unique<Model>(library);

private:
    void log(void (Model::*change)(), const char* name)
    {
        QObject::connect(model.get(), change, model.get(),
                         [this, name] { signalLog.append(QLatin1String(name)); });
    }
};

} // namespace tessary::testing
