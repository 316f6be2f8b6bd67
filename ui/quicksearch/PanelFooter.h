#pragma once

#include <QWidget>

class QLabel;

namespace tessary {

class Theme;

/// The panel's bottom: how many results there are, and the keys to use them with, as far as there is room.
class PanelFooter : public QWidget {
    Q_OBJECT
public:
    explicit PanelFooter(const Theme& theme, QWidget* parent = nullptr);

    void setCount(qsizetype count);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void addHint(const QString& keys, const QString& word);
    void showHints();
    void applyTheme();

    const Theme& m_theme;
    QLabel* m_count;
    QList<QWidget*> m_hints;
};

} // namespace tessary
