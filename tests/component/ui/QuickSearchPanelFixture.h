#pragma once

#include "app/AppRuntime.h"
#include "platform/testing/FakeWindowEffects.h"
#include "tests/support/Await.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FakeWindows.h"
#include "tests/support/RecordSamples.h"
#include "ui/kit/Theme.h"
#include "ui/quicksearch/KeyableSearchPanel.h"
#include "ui/quicksearch/QuickSearchPanelController.h"

#include <QWindow>

namespace tessary::testing {

/// Hands what the runtime asks for to the panel, and takes notes of the rest.
class PanelWindows : public FakeWindows {
public:
    [[nodiscard]] bool isQuickSearchVisible() const override { return panel && panel->isVisible(); }
    void showQuickSearch() override { panel->show(); }
    void hideQuickSearch() override { panel->hide(); }
    void showSettings() override { ++settings; }
    void showPreview(const ScreenshotRecord& record) override { previewed.append(record.textContent); }

    QuickSearchPanelController* panel = nullptr;
    int settings = 0;
    QStringList previewed;
};

/// The quick search panel of a real runtime on fakes, with an empty library at first.
class QuickSearchPanelFixture : public ::testing::Test, protected FakePlatform {
protected:
    void SetUp() override
    {
        await(runtime.start());
        controller.emplace(runtime, theme, effects);
        windows.panel = &*controller;
    }
    ~QuickSearchPanelFixture() override
    {
        controller.reset();
        await(runtime.shutDown());
        clock.advance(std::chrono::seconds(1)); // refreshes that waited for the end of typing end
    }

    void add(const ScreenshotRecord& record)
    {
        ASSERT_TRUE(await(runtime.store()->insert(record)));
        Q_EMIT runtime.libraryChanged();
    }
    void addTexts(const QStringList& texts)
    {
        double time = 1'700'000'000;
        for (const QString& text : texts)
            add(textRecord(text, time += 60));
        ASSERT_TRUE(eventually([&] { return results().size() == texts.size(); }));
    }
    void show()
    {
        runtime.toggleQuickSearch();
        ASSERT_TRUE(QTest::qWaitForWindowActive(controller->panel().windowHandle()));
        clock.advance(std::chrono::milliseconds(180));
        ASSERT_TRUE(eventually([&] { return !controller->model().isSearching(); }));
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(controller->panel().windowHandle(), key, modifiers);
    }
    void type(const QString& text)
    {
        for (const QChar letter : text)
            QTest::keyClick(controller->panel().windowHandle(), letter.toLatin1());
    }
    [[nodiscard]] QStringList results()
    {
        QStringList texts;
        for (const ScreenshotRecord& record : controller->model().results())
            texts.append(record.textContent);
        return texts;
    }
    [[nodiscard]] QString selected()
    {
        const auto record = controller->model().selectedRecord();
        return record ? record->textContent : QString();
    }
    template <typename Widget>
    [[nodiscard]] Widget& part()
    {
        auto* found = controller->panel().findChild<Widget*>();
        EXPECT_NE(found, nullptr);
        return *found;
    }
    [[nodiscard]] ScreenshotRecord stored(const QString& text)
    {
        for (const ScreenshotRecord& record : controller->model().results()) {
            if (record.textContent == text)
                return record;
        }
        ADD_FAILURE() << "not listed: " << text.toStdString();
        return {};
    }

    PanelWindows windows;
    FakeWindowEffects effects;
    Theme theme;
    AppRuntime runtime{platform, windows};
    std::optional<QuickSearchPanelController> controller;
    QWidget other; // a window that takes the focus away
};

} // namespace tessary::testing
