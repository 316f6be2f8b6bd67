#pragma once

#include <QColor>
#include <QPixmap>
#include <QString>
#include <QStringList>

namespace tessary {

/// One of the drawn symbols by its name, such as "magnifyingglass". Main thread only.
class Symbol {
public:
    explicit Symbol(QString name) : m_name(std::move(name)) {}

    /// The names of all symbols there are.
    [[nodiscard]] static QStringList names();

    [[nodiscard]] const QString& name() const { return m_name; }
    /// Whether there is a drawing of that name; a missing one is a mistake that tests find.
    [[nodiscard]] bool exists() const;
    /// The symbol in a square of `size` logical pixels, in that colour, with thinner strokes from 28 pixels
    /// on; a null pixmap when it is missing. Kept in QPixmapCache.
    [[nodiscard]] QPixmap pixmap(int size, const QColor& colour, qreal devicePixelRatio) const;

private:
    [[nodiscard]] QString path() const;
    [[nodiscard]] QByteArray drawing(int size, const QColor& colour) const;

    QString m_name;
};

} // namespace tessary
