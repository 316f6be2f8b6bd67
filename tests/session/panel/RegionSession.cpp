#include "tests/session/panel/RegionSession.h"

#include <QJsonDocument>

#include <csignal>

namespace tessary::testing {

void RegionSession::movePointer(const QPoint& place)
{
    xdotool({QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y())});
}

void RegionSession::drag(const QPoint& from, const QPoint& to)
{
    movePointer(from);
    xdotool({QStringLiteral("mousedown"), QStringLiteral("1")});
    movePointer((from + to) / 2);
    movePointer(to);
    xdotool({QStringLiteral("mouseup"), QStringLiteral("1")});
}

/// The log tells when pointer and keyboard are taken, which nothing on the screen does.
::testing::AssertionResult RegionSession::overlayComes()
{
    const auto begun = [this] {
        return tessary().output().count(QStringLiteral("a region is being selected"));
    };
    if (!eventually([&] { return begun() > m_selections; }))
        return ::testing::AssertionFailure() << "no selection began";
    m_selections = begun();
    if (!screen.visible(kOverlay))
        return ::testing::AssertionFailure() << "no overlay is there";
    return ::testing::AssertionSuccess();
}

::testing::AssertionResult RegionSession::overlayGoes() const
{
    if (eventually([this] { return !screen.visible(kOverlay).has_value(); }))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "the overlay stayed";
}

QRect RegionSession::openPage(const char* line, const QPoint& place)
{
    const QString geometry = QStringLiteral("30x2+%1+%2").arg(place.x()).arg(place.y());
    const QStringList arguments{QStringLiteral("-title"),
                                QLatin1String(kPage),
                                QStringLiteral("-fa"),
                                QStringLiteral("DejaVu Sans Mono"),
                                QStringLiteral("-fs"),
                                QStringLiteral("15"),
                                QStringLiteral("-geometry"),
                                geometry,
                                QStringLiteral("+sb"),
                                QStringLiteral("-e"),
                                QStringLiteral("sh"),
                                QStringLiteral("-c"),
                                QStringLiteral("printf '\\033[?25l%1'; cat").arg(QLatin1String(line))};
    // Now and then a terminal stays as narrow as it was when the window manager first saw it.
    constexpr int kTerminals = 3;
    std::optional<QRect> area;
    for (int i = 0; i < kTerminals && !area; ++i) {
        ChildProcess& terminal = program(QStringLiteral("xterm"), arguments);
        if (!eventually([&] { return (area = drawnPage()).has_value(); }, std::chrono::seconds(7)))
            terminal.kill(SIGTERM);
    }
    EXPECT_TRUE(area) << "no page with text came";
    return area.value_or(QRect());
}

std::optional<QRect> RegionSession::drawnPage() const
{
    constexpr int kNarrow = 200; // a terminal is a single letter wide until its font has been loaded
    const auto page = screen.visible(kPage);
    if (!page || page->geometry.width() < kNarrow)
        return std::nullopt;
    const QRect area = page->geometry;
    const QImage picture = screen.picture(area).convertToFormat(QImage::Format_Grayscale8);
    const QRgb paper = picture.pixel(area.width() / 2, area.height() - 4);
    for (int x = 0; x < picture.width(); ++x)
        if (qAbs(qGray(picture.pixel(x, area.height() / 4)) - qGray(paper)) > 100)
            return area;
    return std::nullopt;
}

QString RegionSession::lastError()
{
    const auto status = run({QStringLiteral("status"), QStringLiteral("--json")});
    EXPECT_EQ(status->exitCode(), 0);
    return QJsonDocument::fromJson(status->output().toUtf8())[QStringLiteral("lastError")].toString();
}

} // namespace tessary::testing
