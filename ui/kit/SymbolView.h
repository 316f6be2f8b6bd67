#pragma once

#include <QImage>
#include <QWidget>

namespace tessary {

class Theme;
struct ThemeColours;

/// A symbol that is only looked at, or a picture of the same size in its place.
class SymbolView : public QWidget {
    Q_OBJECT
public:
    SymbolView(const Theme& theme, QString symbol, int size, QColor ThemeColours::*colour,
               QWidget* parent = nullptr);

    void setSymbol(const QString& symbol, QColor ThemeColours::*colour);
    [[nodiscard]] const QString& symbol() const { return m_symbol; }
    /// A null picture brings the symbol back.
    void setPicture(const QImage& picture);

    [[nodiscard]] QSize sizeHint() const override { return {m_size, m_size}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Theme& m_theme;
    QString m_symbol;
    int m_size;
    QColor ThemeColours::*m_colour;
    QImage m_picture;
};

} // namespace tessary
