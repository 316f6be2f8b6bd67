#include "ui/kit/Symbol.h"

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <cmath>

namespace tessary {
namespace {

const QString& folder()
{
    static const QString path = QStringLiteral(":/tessary/symbols/");
    return path;
}

} // namespace

QStringList Symbol::names()
{
    QStringList names = QDir(folder()).entryList({QStringLiteral("*.svg")}, QDir::Files, QDir::Name);
    for (QString& name : names)
        name.chop(static_cast<int>(qstrlen(".svg")));
    return names;
}

bool Symbol::exists() const
{
    return !m_name.isEmpty() && QFile::exists(path());
}

QPixmap Symbol::pixmap(int size, const QColor& colour, qreal devicePixelRatio) const
{
    const QString key = QStringLiteral("tessary/%1/%2/%3/%4")
                            .arg(m_name, QString::number(size), colour.name(QColor::HexArgb),
                                 QString::number(devicePixelRatio));
    QPixmap pixmap;
    if (size < 1 || devicePixelRatio <= 0 || !exists() || QPixmapCache::find(key, &pixmap))
        return pixmap;
    const int side = static_cast<int>(std::ceil(size * devicePixelRatio));
    pixmap = QPixmap(side, side);
    pixmap.fill(Qt::transparent);
    QSvgRenderer renderer(drawing(size, colour));
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QPainter painter(&pixmap);
    renderer.render(&painter, QRectF(0, 0, side, side));
    // Opacity comes afterwards, so that it does not show where strokes cross.
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.fillRect(pixmap.rect(), QColor(0, 0, 0, colour.alpha()));
    painter.end();
    pixmap.setDevicePixelRatio(devicePixelRatio);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

QString Symbol::path() const
{
    return folder() + m_name + QStringLiteral(".svg");
}

/// QtSvg knows neither `currentColor` nor a stroke that depends on the size, so both are put into the text.
QByteArray Symbol::drawing(int size, const QColor& colour) const
{
    constexpr int kThinFrom = 28;
    QFile file(path());
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QByteArray svg = file.readAll();
    svg.replace("currentColor", colour.name(QColor::HexRgb).toLatin1());
    if (size >= kThinFrom)
        svg.replace("stroke-width=\"1.75\"", "stroke-width=\"1.3\"");
    return svg;
}

} // namespace tessary
