#include "tests/session/panel/PanelSession.h"
#include "tests/support/RecordSamples.h"

namespace tessary::testing {

namespace {

using Kind = PasteTarget::Kind;

struct Target {
    Kind kind;
    const char* name;
};

class PanelPasteTest : public PanelSession, public ::testing::WithParamInterface<Target> {};

TEST_P(PanelPasteTest, ATextCopiedInOneProgramIsFoundAndArrivesInAnother)
{
    startWithPanel();
    copyText(QStringLiteral("Grüße 世界 from afar"));
    ASSERT_TRUE(holdsText(QStringLiteral("Grüße 世界 from afar")));
    copyText(QStringLiteral("something newer"));
    ASSERT_TRUE(holdsText(QStringLiteral("something newer")));
    ASSERT_TRUE(lists(2));
    PasteTarget& target = open(GetParam().kind);
    ASSERT_TRUE(opensPanel());
    type(QStringLiteral("afar"));
    ASSERT_TRUE(lists(1));
    press("Return");
    EXPECT_TRUE(arrives(target, QStringLiteral("Grüße 世界 from afar")));
    EXPECT_TRUE(goes());
    EXPECT_TRUE(isInFront("target"));
}

INSTANTIATE_TEST_SUITE_P(Into, PanelPasteTest,
                         ::testing::Values(Target{Kind::Gtk3, "Gtk3"}, Target{Kind::Gtk4, "Gtk4"},
                                           Target{Kind::Qt, "Qt"}, Target{Kind::Xterm, "Xterm"},
                                           Target{Kind::Vte, "Vte"}),
                         [](const auto& one) { return std::string(one.param.name); });

} // namespace

} // namespace tessary::testing
