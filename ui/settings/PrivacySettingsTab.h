#pragma once

#include "platform/InstalledApplications.h"
#include "ui/settings/ApplicationSources.h"
#include "ui/settings/SettingsPage.h"

#include <QPointer>

namespace tessary {

class AppRuntime;
class ApplicationChooser;
class PermissionRow;
class PushButton;
class RemovableEntries;
struct PickedWindow;

/// What the session allows, what is not recorded, and how to get rid of everything.
class PrivacySettingsTab : public SettingsPage {
    Q_OBJECT
public:
    PrivacySettingsTab(const Theme& theme, AppRuntime& runtime, const ApplicationSources& sources,
                       QWidget* parent = nullptr);
    ~PrivacySettingsTab() override;

    /// Null while it is closed.
    [[nodiscard]] ApplicationChooser* applicationChooser() const;
    /// Closes what is open over the window.
    void dismissChooser();

Q_SIGNALS:
    void clearAllDataRequested();
    /// The person is about to point at a window on the screen; ours should not be in the way.
    void pickingBegan();
    void pickingEnded();

private:
    void addPermissions();
    void showPermissions();
    void addApplications();
    void addFolders();
    void addClearing();
    PushButton* newButton(const QString& text, const QString& symbol = {});
    void chooseApplication();
    void pickWindow();
    void takeWindow(const PickedWindow& picked);
    void exclude(const QString& identifier);
    void showApplications();
    void nameApplications(const QList<InstalledApplication>& found);
    void chooseFolder();

    AppRuntime& m_runtime;
    ApplicationSources m_sources;
    PermissionRow* m_screenRecording = nullptr;
    PermissionRow* m_accessibility = nullptr;
    PermissionRow* m_reminders = nullptr;
    RemovableEntries* m_applications = nullptr;
    RemovableEntries* m_folders = nullptr;
    QPointer<ApplicationChooser> m_chooser;
    bool m_isPicking = false;
};

} // namespace tessary
