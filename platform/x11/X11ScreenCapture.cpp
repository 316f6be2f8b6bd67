#include "platform/x11/X11ScreenCapture.h"

#include "platform/x11/RootPicture.h"

#include <QGuiApplication>
#include <QScreen>

namespace tessary {
namespace {

struct NamedArea {
    QString screen;
    QRect area; // device pixels
};

/// Where the screens are in the root window: Qt scales their sizes, but keeps their origins.
QList<NamedArea> areasOfScreens()
{
    QList<NamedArea> areas;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect geometry = screen->geometry();
        const QSize pixels = (QSizeF(geometry.size()) * screen->devicePixelRatio()).toSize();
        areas.append({screen->name(), QRect(geometry.topLeft(), pixels)});
    }
    return areas;
}

} // namespace

X11ScreenCapture::X11ScreenCapture() : m_lane(QStringLiteral("tessary-screens")) {}

QCoro::Task<QList<ScreenPicture>> X11ScreenCapture::pictures()
{
    const QList<NamedArea> areas = areasOfScreens();
    auto taking = m_lane.post([areas] {
        const RootPicture root;
        QList<ScreenPicture> taken;
        for (const NamedArea& one : areas)
            taken.append({one.screen, root.take(one.area)});
        return taken;
    });
    co_return co_await taking;
}

} // namespace tessary
