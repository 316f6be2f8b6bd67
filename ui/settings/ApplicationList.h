#pragma once

#include "platform/InstalledApplications.h"

#include <QListWidget>
#include <QSet>

namespace tessary {

class ApplicationIcons;
class Theme;

/// Programs with their icons, narrowed by what their names contain.
class ApplicationList : public QListWidget {
    Q_OBJECT
public:
    ApplicationList(const Theme& theme, ApplicationIcons& icons, QWidget* parent = nullptr);

    void setApplications(const QList<InstalledApplication>& applications);
    /// Shows those only whose name or identifier contains the text, upper and lower case alike.
    void narrow(const QString& text);
    /// The one that is selected, if any.
    [[nodiscard]] std::optional<InstalledApplication> selected() const;
    [[nodiscard]] int shownCount() const;
    /// Selects the next or the one before, among those shown.
    void moveSelection(int step);

private:
    void applyTheme();
    void loadIcon(int row);

    const Theme& m_theme;
    ApplicationIcons& m_icons;
    QList<InstalledApplication> m_applications; // as the rows
};

} // namespace tessary
