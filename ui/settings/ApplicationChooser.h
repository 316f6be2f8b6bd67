#pragma once

#include "platform/InstalledApplications.h"
#include "ui/settings/ApplicationSources.h"

#include <QWidget>

namespace tessary {

class ApplicationList;
class PushButton;
class TextField;
class Theme;
class ThemedLabel;

/// A card over the dimmed window with the installed programs, of which the person chooses one; or asks to
/// point at a window instead. Deletes itself when it closes.
class ApplicationChooser : public QWidget {
    Q_OBJECT
public:
    /// @param host is covered wholly; owns this.
    /// @param hidden identifiers that are not offered.
    ApplicationChooser(const Theme& theme, const ApplicationSources& sources, const QStringList& hidden,
                       QWidget& host);

    /// Nothing is chosen.
    void dismiss();

Q_SIGNALS:
    void chosen(const tessary::InstalledApplication& application);
    void windowRequested();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void addParts();
    void load(const QStringList& hidden);
    void accept();
    void layOut();
    void showState();
    [[nodiscard]] bool handleKey(int key);

    const Theme& m_theme;
    ApplicationSources m_sources;
    QWidget* m_card;
    ThemedLabel* m_title;
    TextField* m_search;
    ApplicationList* m_list;
    ThemedLabel* m_nothing;
    PushButton* m_pick;
    PushButton* m_cancel;
    PushButton* m_add;
    bool m_isLoaded = false;
};

} // namespace tessary
