#include "platform/linux/PortalAppearance.h"

#include "tests/support/BusService.h"
#include "tests/support/PrivateBus.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>

namespace tessary {
namespace {

using testing::eventually;
using ColourScheme = DesktopAppearance::ColourScheme;
using Namespaces = AppearanceSettings::Namespaces;

struct Parts {
    double red, green, blue;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Parts& parts)
{
    argument.beginStructure();
    argument << parts.red << parts.green << parts.blue;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Parts& parts)
{
    argument.beginStructure();
    argument >> parts.red >> parts.green >> parts.blue;
    argument.endStructure();
    return argument;
}

const QString kAppearance = QStringLiteral("org.freedesktop.appearance");
const QString kInterface = QStringLiteral("org.gnome.desktop.interface");

} // namespace
} // namespace tessary

Q_DECLARE_METATYPE(tessary::Parts)

namespace tessary {
namespace {

class PortalAppearanceTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        qDBusRegisterMetaType<Parts>();
        qDBusRegisterMetaType<Namespaces>();
        ASSERT_TRUE(bus.start());
    }
    void TearDown() override { QGuiApplication::setPalette(QPalette()); }

    void startPortal(const Namespaces& settings)
    {
        const auto answer = [this, settings](const QDBusMessage& call) -> std::optional<QDBusMessage> {
            askedFor = call.arguments().value(0).toStringList();
            return call.createReply(QVariant::fromValue(settings));
        };
        portal = std::make_unique<testing::BusService>(
            bus.address(), QStringLiteral("org.freedesktop.portal.Desktop"),
            QStringLiteral("/org/freedesktop/portal/desktop"), answer);
        ASSERT_TRUE(portal->isRegistered());
    }
    void startAppearance()
    {
        bool answered = false;
        appearance = std::make_unique<PortalAppearance>(bus.address());
        QObject::connect(appearance.get(), &PortalAppearance::asked, [&] { answered = true; });
        QObject::connect(appearance.get(), &PortalAppearance::changed, [this] { ++changes; });
        EXPECT_TRUE(eventually([&] { return answered; }));
        QObject::disconnect(appearance.get(), &PortalAppearance::asked, nullptr, nullptr);
    }
    void change(const QString& group, const QString& key, const QVariant& value)
    {
        portal->emitSignal(QStringLiteral("org.freedesktop.portal.Settings"),
                           QStringLiteral("SettingChanged"),
                           {group, key, QVariant::fromValue(QDBusVariant(value))});
    }
    static QVariant parts(double red, double green, double blue)
    {
        return QVariant::fromValue(Parts{red, green, blue});
    }

    testing::PrivateBus bus;
    QStringList askedFor;
    std::unique_ptr<testing::BusService> portal;
    std::unique_ptr<PortalAppearance> appearance;
    int changes = 0;
};

TEST_F(PortalAppearanceTest, ReadsWhatTheDesktopPrefers)
{
    startPortal(
        {{kAppearance,
          {{QStringLiteral("color-scheme"), 1U}, {QStringLiteral("accent-color"), parts(1, 0.2, 0)}}},
         {kInterface,
          {{QStringLiteral("enable-animations"), false}, {QStringLiteral("text-scaling-factor"), 1.25}}}});
    startAppearance();
    EXPECT_EQ(appearance->colourScheme(), ColourScheme::Dark);
    ASSERT_TRUE(appearance->accentColour());
    EXPECT_EQ(appearance->accentColour()->name(), QStringLiteral("#ff3300"));
    EXPECT_TRUE(appearance->reducedMotion());
    EXPECT_EQ(appearance->textScale(), 1.25);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(askedFor, AppearanceSettings::namespaces());
}

TEST_F(PortalAppearanceTest, HearsOfChangesAsTheyAreMade)
{
    startPortal({{kAppearance, {{QStringLiteral("color-scheme"), 2U}}}});
    startAppearance();
    EXPECT_EQ(appearance->colourScheme(), ColourScheme::Light);
    EXPECT_FALSE(appearance->reducedMotion());
    change(kAppearance, QStringLiteral("color-scheme"), 1U);
    EXPECT_TRUE(eventually([&] { return appearance->colourScheme() == ColourScheme::Dark; }));
    change(kAppearance, QStringLiteral("accent-color"), parts(0, 0, 1));
    EXPECT_TRUE(eventually([&] { return appearance->accentColour() == QColor(0, 0, 255); }));
    change(kAppearance, QStringLiteral("reduced-motion"), 1U);
    EXPECT_TRUE(eventually([&] { return appearance->reducedMotion(); }));
    EXPECT_EQ(changes, 4);
}

TEST_F(PortalAppearanceTest, TellsNothingWhenAChangeChangesNothing)
{
    startPortal({{kAppearance, {{QStringLiteral("color-scheme"), 1U}}}});
    startAppearance();
    change(kAppearance, QStringLiteral("color-scheme"), 1U);
    change(QStringLiteral("org.example.other"), QStringLiteral("color-scheme"), 2U);
    change(kAppearance, QStringLiteral("accent-color"), parts(-1, -1, -1));
    change(kInterface, QStringLiteral("text-scaling-factor"), 2.0);
    EXPECT_TRUE(eventually([&] { return appearance->textScale() == 2; }));
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(appearance->colourScheme(), ColourScheme::Dark);
    EXPECT_EQ(appearance->accentColour(), std::nullopt);
}

TEST_F(PortalAppearanceTest, TakesTheNameOfADarkThemeWhereNothingIsPreferred)
{
    startPortal({{kAppearance, {{QStringLiteral("color-scheme"), 0U}}},
                 {kInterface, {{QStringLiteral("gtk-theme"), QStringLiteral("Adwaita-dark")}}}});
    startAppearance();
    EXPECT_EQ(appearance->colourScheme(), ColourScheme::Dark);
    change(kInterface, QStringLiteral("gtk-theme"), QStringLiteral("Adwaita"));
    EXPECT_TRUE(eventually([&] { return appearance->colourScheme() == ColourScheme::Unknown; }));
    change(kInterface, QStringLiteral("color-scheme"), QStringLiteral("prefer-light"));
    EXPECT_TRUE(eventually([&] { return appearance->colourScheme() == ColourScheme::Light; }));
}

TEST_F(PortalAppearanceTest, ValuesOfAnUnknownKindAreNoPreference)
{
    startPortal({{kAppearance,
                  {{QStringLiteral("color-scheme"), QStringLiteral("dark")},
                   {QStringLiteral("accent-color"), QStringLiteral("#ff0000")},
                   {QStringLiteral("reduced-motion"), 7U}}},
                 {kInterface,
                  {{QStringLiteral("enable-animations"), QStringLiteral("false")},
                   {QStringLiteral("text-scaling-factor"), -3.0}}}});
    startAppearance();
    EXPECT_EQ(appearance->colourScheme(), ColourScheme::Unknown);
    EXPECT_EQ(appearance->accentColour(), std::nullopt);
    EXPECT_FALSE(appearance->reducedMotion());
    EXPECT_EQ(appearance->textScale(), 1);
    EXPECT_EQ(changes, 0);
}

TEST_F(PortalAppearanceTest, ReadsAgainFromAPortalThatStartsLater)
{
    startAppearance();
    EXPECT_EQ(appearance->colourScheme(), ColourScheme::Unknown);
    startPortal({{kAppearance, {{QStringLiteral("color-scheme"), 1U}}}});
    EXPECT_TRUE(eventually([&] { return appearance->colourScheme() == ColourScheme::Dark; }));
    change(kAppearance, QStringLiteral("color-scheme"), 2U);
    EXPECT_TRUE(eventually([&] { return appearance->colourScheme() == ColourScheme::Light; }));
}

TEST_F(PortalAppearanceTest, WithoutAPortalADarkPaletteTellsOfADarkDesktop)
{
    startAppearance();
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(30, 30, 32));
    QGuiApplication::setPalette(dark);
    EXPECT_TRUE(eventually([&] { return appearance->colourScheme() == ColourScheme::Dark; }));
    EXPECT_EQ(changes, 1);
}

TEST_F(PortalAppearanceTest, WithoutABusNothingIsKnown)
{
    bool answered = false;
    PortalAppearance lonely(QStringLiteral("unix:path=/nowhere/bus"));
    QObject::connect(&lonely, &PortalAppearance::asked, [&] { answered = true; });
    EXPECT_TRUE(eventually([&] { return answered; }));
    EXPECT_EQ(lonely.colourScheme(), ColourScheme::Unknown);
    EXPECT_EQ(lonely.accentColour(), std::nullopt);
    EXPECT_FALSE(lonely.reducedMotion());
    EXPECT_EQ(lonely.textScale(), 1);
}

TEST_F(PortalAppearanceTest, APortalThatNeverAnswersDelaysNothing)
{
    const auto silence = [](const QDBusMessage&) -> std::optional<QDBusMessage> { return std::nullopt; };
    testing::BusService silent(bus.address(), QStringLiteral("org.freedesktop.portal.Desktop"),
                               QStringLiteral("/org/freedesktop/portal/desktop"), silence);
    QElapsedTimer watch;
    watch.start();
    {
        PortalAppearance waiting(bus.address());
        EXPECT_EQ(waiting.colourScheme(), ColourScheme::Unknown);
    }
    EXPECT_LT(watch.elapsed(), 2000);
}

} // namespace
} // namespace tessary
