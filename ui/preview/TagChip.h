#pragma once

#include <QWidget>

namespace tessary {

class SymbolButton;
class Theme;

/// One tag in the field, with what removes it. Elided where it has no room.
class TagChip : public QWidget {
    Q_OBJECT
public:
    TagChip(const Theme& theme, const QString& text, QWidget* parent = nullptr);

    [[nodiscard]] const QString& text() const { return m_text; }
    [[nodiscard]] QSize sizeHint() const override;
    void setRemovable(bool isRemovable);

Q_SIGNALS:
    void removed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    const Theme& m_theme;
    QString m_text;
    SymbolButton* m_remove;
};

} // namespace tessary
