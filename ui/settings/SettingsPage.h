#pragma once

#include "app/AppSettings.h"

#include <QScrollArea>

#include <functional>

class QVBoxLayout;

namespace tessary {

class SettingsCard;
class SettingsRow;
class Switch;
class Theme;

/// What one tab shows: groups of settings in a column that scrolls.
class SettingsPage : public QScrollArea {
    Q_OBJECT
public:
    explicit SettingsPage(const Theme& theme, QWidget* parent = nullptr);

    [[nodiscard]] QSize minimumSizeHint() const override { return {0, 0}; }

protected:
    /// A published setting that is on or off.
    struct Toggle {
        bool (AppSettings::*value)() const;
        void (AppSettings::*changed)();
        void (AppSettings::*assign)(bool);
    };

    [[nodiscard]] const Theme& theme() const { return m_theme; }
    /// A group with a heading; a note and a button belong to it where they are given.
    SettingsCard& addGroup(const QString& title = {}, const QString& note = {}, QWidget* button = nullptr);
    void addWidget(QWidget* widget);
    /// A switch in the row that is as the setting is. @param then is called when the person changed it.
    Switch& addSwitch(SettingsRow& row, AppSettings& settings, const Toggle& toggle,
                      std::function<void()> then = {});
    void resizeEvent(QResizeEvent* event) override;

private:
    void layOut();

    const Theme& m_theme;
    QVBoxLayout* m_column;
};

} // namespace tessary
