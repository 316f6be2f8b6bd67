#pragma once

#include "store/ScreenshotRecord.h"
#include "tests/session/PasteTarget.h"
#include "tests/session/SessionTest.h"
#include "tests/session/panel/ScreenWindows.h"

namespace tessary::testing {

/// The real program with its panel on Control+Alt+Space, and a person at the keyboard and the mouse.
class PanelSession : public SessionTest {
protected:
    PanelSession();
    /// The layout of the keyboard is as before.
    ~PanelSession() override;

    /// Settings beside the shortcut; before the start.
    void set(const QString& line) { m_settings.append(line); }
    /// What is in the library when the program starts; before that.
    void prepare(const QList<ScreenshotRecord>& items);
    /// Starts the program and waits until the shortcut is its own and the list has been read.
    void startWithPanel();

    static void xdotool(const QStringList& arguments);
    static void press(const char* keys) { xdotool({QStringLiteral("key"), QLatin1String(keys)}); }
    static void type(const QString& text);
    static void pressShortcut() { press(kShortcut); }
    static void clickAt(const QPoint& place);
    static void setLayout(const QStringList& arguments);

    /// Presses the shortcut and waits until the panel has the keyboard.
    [[nodiscard]] ::testing::AssertionResult opensPanel();
    /// Waits until it is there and has the keyboard, or is gone.
    [[nodiscard]] ::testing::AssertionResult comes();
    [[nodiscard]] ::testing::AssertionResult goes();
    [[nodiscard]] bool isShown() const { return screen.visible(kPanel).has_value(); }
    /// Where the panel's window is; it is shown.
    [[nodiscard]] QRect panelGeometry() const;
    /// Waits until the list was read again since the call before, with so many results.
    [[nodiscard]] ::testing::AssertionResult lists(int count);
    /// Cuts what is in the search field and tells what it was: the next text that comes to the clipboard.
    [[nodiscard]] QString cutField();
    [[nodiscard]] static QString clipboard();

    /// Starts the program and waits until it is in front.
    PasteTarget& open(PasteTarget::Kind kind, const char* title = "target");
    [[nodiscard]] bool isInFront(const char* title) const;
    [[nodiscard]] ::testing::AssertionResult arrives(PasteTarget& target, const QString& text);

    static constexpr const char* kShortcut = "ctrl+alt+space";
    static constexpr const char* kPanel = "Tessary";
    ScreenWindows screen;

private:
    [[nodiscard]] bool hasKeyboard() const;

    QStringList m_settings;
    int m_prepared = 0;
    qsizetype m_listsRead = 0; // how much of the program's log the lists before have taken
    std::vector<std::unique_ptr<PasteTarget>> m_targets;
};

} // namespace tessary::testing
