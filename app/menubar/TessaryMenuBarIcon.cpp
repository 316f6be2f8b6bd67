#include "app/menubar/TessaryMenuBarIcon.h"

#include "ui/kit/Symbol.h"

namespace tessary {
namespace {

constexpr int kSizes[] = {16, 22, 24, 32, 44, 48};

} // namespace

TessaryMenuBarIcon::TessaryMenuBarIcon(QString resource)
    : m_drawing(Symbol(resource).exists() ? std::move(resource) : QStringLiteral("doc.on.clipboard.fill"))
{
}

QIcon TessaryMenuBarIcon::image(DesktopAppearance::ColourScheme panel) const
{
    QIcon icon;
    for (const int size : kSizes)
        icon.addPixmap(Symbol(m_drawing).pixmap(size, colour(panel), 1));
    return icon;
}

QColor TessaryMenuBarIcon::colour(DesktopAppearance::ColourScheme panel)
{
    switch (panel) {
    case DesktopAppearance::ColourScheme::Light:
        return QColor(0x1C, 0x1C, 0x1E);
    case DesktopAppearance::ColourScheme::Dark:
        return QColor(0xF2, 0xF2, 0xF4);
    case DesktopAppearance::ColourScheme::Unknown:
        break;
    }
    return QColor(0x3D, 0x78, 0xF0);
}

} // namespace tessary
