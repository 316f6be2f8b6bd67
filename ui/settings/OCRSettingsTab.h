#pragma once

#include "ui/settings/SettingsPage.h"

class QHBoxLayout;

namespace tessary {

class AppRuntime;

/// How text is recognised, and what becomes of it.
class OCRSettingsTab : public SettingsPage {
    Q_OBJECT
public:
    OCRSettingsTab(const Theme& theme, AppRuntime& runtime, QWidget* parent = nullptr);

private:
    [[nodiscard]] QWidget* languageTags() const;

    AppRuntime& m_runtime;
};

} // namespace tessary
