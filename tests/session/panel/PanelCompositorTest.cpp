#include "tests/session/panel/PanelSession.h"

#include <QProcess>

#include <csignal>

namespace tessary::testing {

namespace {

constexpr QSize kBody(780, 540);
constexpr QSize kScreen(1280, 800);

/// A window manager that composes the screen when it is asked to.
class PanelCompositorTest : public PanelSession {
protected:
    ~PanelCompositorTest() override
    {
        if (m_manager != nullptr)
            m_manager->kill(SIGTERM);
    }
    void manage(bool composes)
    {
        const QString compositor =
            QStringLiteral("--compositor=") + (composes ? QStringLiteral("on") : QStringLiteral("off"));
        m_manager = &program(QStringLiteral("xfwm4"), {QStringLiteral("--replace"),
                                                       QStringLiteral("--sm-client-disable"), compositor});
        ASSERT_TRUE(eventually([&] { return screen.isManaged() && screen.isComposited() == composes; }));
    }
    void endManager()
    {
        std::exchange(m_manager, nullptr)->kill(SIGTERM);
        ASSERT_TRUE(eventually([this] { return !screen.isManaged() && !screen.isComposited(); }));
    }
    /// Where what is seen of the panel belongs.
    static QRect place()
    {
        return {QPoint((kScreen.width() - kBody.width()) / 2, static_cast<int>(0.12 * kScreen.height())),
                kBody};
    }

private:
    ChildProcess* m_manager = nullptr;
};

TEST_F(PanelCompositorTest, ThereTheWindowIsTranslucentAndLargerByItsShadow)
{
    manage(true);
    startWithPanel();
    ASSERT_TRUE(opensPanel());
    const QRect window = panelGeometry();
    const int margin = (window.width() - kBody.width()) / 2;
    EXPECT_GT(margin, 10);
    EXPECT_EQ(window.adjusted(margin, margin, -margin, -margin), place());
    EXPECT_TRUE(screen.isTranslucent(screen.visible(kPanel)->id));
}

TEST_F(PanelCompositorTest, AClickOnTheShadowIsForTheWindowBelow)
{
    manage(true);
    startWithPanel();
    open(PasteTarget::Kind::Qt);
    xdotool({QStringLiteral("search"), QStringLiteral("--name"), QStringLiteral("^target$"),
             QStringLiteral("windowsize"), QStringLiteral("1200"), QStringLiteral("700")});
    ASSERT_TRUE(eventually([this] { return screen.visible("target")->geometry.width() == 1200; }));
    ASSERT_TRUE(opensPanel());
    const QRect window = panelGeometry();
    ASSERT_GT(window.width(), kBody.width());
    const QPoint body(place().left() + 60, place().bottom() - 60);
    clickAt(body); // on the panel itself: it stays
    const QPoint shadow(place().left() - 6, place().center().y());
    ASSERT_TRUE(window.contains(shadow));
    EXPECT_TRUE(screen.hasKeyboard(screen.visible(kPanel)->id));
    clickAt(shadow);
    EXPECT_TRUE(goes());
    EXPECT_TRUE(isInFront("target"));
}

TEST_F(PanelCompositorTest, ItFollowsACompositorThatComesAndGoes)
{
    manage(false);
    startWithPanel();
    ASSERT_TRUE(opensPanel());
    EXPECT_EQ(panelGeometry(), place());
    EXPECT_FALSE(screen.isTranslucent(screen.visible(kPanel)->id));
    press("Escape");
    ASSERT_TRUE(goes());
    endManager();
    manage(true);
    open(PasteTarget::Kind::Xterm, "first"); // the new window manager is at work
    ASSERT_TRUE(opensPanel());
    EXPECT_GT(panelGeometry().width(), kBody.width());
    EXPECT_TRUE(screen.isTranslucent(screen.visible(kPanel)->id));
    press("Escape");
    ASSERT_TRUE(goes());
    endManager();
    manage(false);
    open(PasteTarget::Kind::Xterm, "second");
    ASSERT_TRUE(opensPanel());
    EXPECT_EQ(panelGeometry(), place());
}

} // namespace

} // namespace tessary::testing
