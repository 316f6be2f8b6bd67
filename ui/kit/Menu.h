#pragma once

#include <QMenu>

namespace tessary {

class Theme;

/// A menu in our looks. `addSection` gives headings.
class Menu : public QMenu {
    Q_OBJECT
public:
    /// @param isTranslucent whether windows may have transparent corners here.
    Menu(const Theme& theme, bool isTranslucent, QWidget* parent = nullptr);

    /// @param symbol may be empty.
    QAction* add(const QString& symbol, const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void applyTheme();

    const Theme& m_theme;
    bool m_isTranslucent;
};

} // namespace tessary
