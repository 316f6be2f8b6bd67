#pragma once

#include "app/AppRuntime.h"
#include "platform/testing/FakeInstalledApplications.h"
#include "platform/testing/FakeWindowEffects.h"
#include "platform/testing/FakeWindowPicker.h"
#include "tests/support/Await.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FakeWindows.h"
#include "ui/kit/FramedWindow.h"
#include "ui/kit/Theme.h"
#include "ui/settings/SettingsPage.h"
#include "ui/settings/SettingsRow.h"
#include "ui/settings/SettingsView.h"
#include "ui/settings/SettingsWindowController.h"

#include <QAbstractButton>
#include <QApplication>

#include <optional>

namespace tessary::testing {

/// The settings window over a real runtime with a fake session.
class SettingsFixture : public ::testing::Test, protected FakePlatform {
protected:
    static constexpr quint32 kKeyO = 32; ///< Numbers of keys as X11 has them.
    static constexpr quint32 kKeyEscape = 9;
    static constexpr quint32 kVirtualO = 31; ///< Classic codes of the same keys.
    static constexpr quint32 kVirtualEscape = 53;

    SettingsFixture()
    {
        effects.virtualKeys = {{kKeyO, kVirtualO}, {kKeyEscape, kVirtualEscape}};
        theme.setReducedMotion(true);
    }
    ~SettingsFixture() override
    {
        controller.reset();
        await(runtime.shutDown());
    }

    void open(SettingsTab tab)
    {
        await(runtime.start());
        controller.emplace(theme, runtime, effects, ApplicationSources{installed, icons, picker});
        controller->show();
        view().selectTab(tab);
        ASSERT_TRUE(QTest::qWaitForWindowActive(controller->window().windowHandle()));
    }
    [[nodiscard]] SettingsView& view() { return controller->view(); }
    [[nodiscard]] SettingsPage& page() { return view().page(view().selectedTab()); }
    [[nodiscard]] AppSettings& settings() { return runtime.settings(); }

    /// The row with that label, on the page that is shown.
    [[nodiscard]] SettingsRow& row(const char* label)
    {
        for (SettingsRow* one : page().findChildren<SettingsRow*>()) {
            if (!one->isHidden() && one->label() == QString::fromUtf8(label))
                return *one;
        }
        ADD_FAILURE() << "no row " << label;
        return *page().findChild<SettingsRow*>();
    }
    /// The control of that kind in the row.
    template <typename Control>
    [[nodiscard]] Control& control(const char* label)
    {
        auto* found = row(label).template findChild<Control*>();
        EXPECT_NE(found, nullptr);
        return *found;
    }
    /// The shown button with that name, anywhere in the window; null when there is none.
    [[nodiscard]] QAbstractButton* button(const QString& name)
    {
        for (auto* one : controller->window().findChildren<QAbstractButton*>()) {
            if (one->isVisible() && (one->accessibleName() == name || one->text() == name))
                return one;
        }
        return nullptr;
    }
    void click(const QString& name)
    {
        QAbstractButton* found = button(name);
        ASSERT_NE(found, nullptr) << name.toStdString();
        QTest::mouseClick(found, Qt::LeftButton);
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(controller->window().windowHandle(), key, modifiers);
    }
    [[nodiscard]] bool holdsText(const QString& text)
    {
        for (const auto* label : page().findChildren<QLabel*>()) {
            if (label->isVisibleTo(&page()) && label->text() == text)
                return true;
        }
        return false;
    }

    FakeWindows windows;
    FakeWindowEffects effects;
    FakeInstalledApplications installed;
    FakeWindowPicker picker;
    Theme theme;
    AppRuntime runtime{platform, windows};
    std::optional<SettingsWindowController> controller;
};

} // namespace tessary::testing
