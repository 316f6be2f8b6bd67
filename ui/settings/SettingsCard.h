#pragma once

#include <QWidget>

class QVBoxLayout;

namespace tessary {

class SettingsRow;
class Theme;

/// Rows on one surface, with lines between them.
class SettingsCard : public QWidget {
    Q_OBJECT
public:
    explicit SettingsCard(const Theme& theme, QWidget* parent = nullptr);

    SettingsRow& add(SettingsRow* row);
    /// In the place of all rows that were there.
    void replace(const QList<SettingsRow*>& rows);
    [[nodiscard]] const QList<SettingsRow*>& rows() const { return m_rows; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Theme& m_theme;
    QVBoxLayout* m_column;
    QList<SettingsRow*> m_rows;
};

} // namespace tessary
