#pragma once

#include "ui/settings/SettingsPage.h"

namespace tessary {

class AppRuntime;
class Picker;
class ThemedLabel;

/// Where things are kept, how much and how long.
class StorageSettingsTab : public SettingsPage {
    Q_OBJECT
public:
    StorageSettingsTab(const Theme& theme, AppRuntime& runtime, QWidget* parent = nullptr);

private:
    /// A published setting that is a number.
    struct Amount {
        int (AppSettings::*value)() const;
        void (AppSettings::*changed)();
        void (AppSettings::*assign)(int);
    };

    void addPlaces();
    void addUsage(SettingsCard& card);
    void addLimits();
    void bind(Picker& picker, const Amount& amount);
    void chooseFolder();
    void enforce();

    AppRuntime& m_runtime;
};

} // namespace tessary
