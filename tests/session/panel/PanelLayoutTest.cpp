#include "tests/session/panel/PanelSession.h"
#include "tests/support/RecordSamples.h"

namespace tessary::testing {

namespace {

/// A keyboard layout, the key that stands for C in it and the one for P.
struct Layout {
    QStringList arguments;
    const char* copy;
    const char* pin;
    const char* name;
};

class PanelLayoutTest : public PanelSession, public ::testing::WithParamInterface<Layout> {};

TEST_P(PanelLayoutTest, TheKeysMeanTheSame)
{
    prepare({textRecord(QStringLiteral("older"), 1'700'000'000),
             textRecord(QStringLiteral("newer"), 1'700'000'060)});
    startWithPanel();
    setLayout(GetParam().arguments);
    ASSERT_TRUE(opensPanel());
    ASSERT_TRUE(lists(2));
    press("Down");
    press(GetParam().copy);
    EXPECT_TRUE(eventually([] { return clipboard() == QStringLiteral("older"); }));
    press(GetParam().pin);
    EXPECT_TRUE(eventually([this] { return library().text(QStringLiteral("older"))->isPinned; }));
}

// By place where the layout has no Latin letters, otherwise by label. The numbers are those of the keys.
INSTANTIATE_TEST_SUITE_P(On, PanelLayoutTest,
                         ::testing::Values(Layout{{QStringLiteral("ru")}, "ctrl+54", "ctrl+33", "ru"},
                                           Layout{{QStringLiteral("de")}, "ctrl+54", "ctrl+33", "de"},
                                           Layout{{QStringLiteral("us"), QStringLiteral("dvorak")},
                                                  "ctrl+31",
                                                  "ctrl+27",
                                                  "dvorak"}),
                         [](const auto& one) { return std::string(one.param.name); });

class PanelGermanTest : public PanelSession {};

TEST_F(PanelGermanTest, YIsWhereItIsPrinted)
{
    prepare({textRecord(QStringLiteral("item"))});
    startWithPanel();
    setLayout({QStringLiteral("de")});
    ASSERT_TRUE(opensPanel());
    ASSERT_TRUE(lists(1));
    press("ctrl+29"); // Z
    press("ctrl+33"); // P; once it has come, so has the one before
    EXPECT_TRUE(eventually([this] { return library().items().front().isPinned; }));
    EXPECT_FALSE(screen.visible("item"));
    press("ctrl+52");
    EXPECT_TRUE(isInFront("item")); // previewed in a window of its own
}

} // namespace

} // namespace tessary::testing
