#pragma once

#include "ui/settings/SettingsRow.h"

namespace tessary {

class PushButton;

/// One thing that the session allows or not, with a button to ask for it.
class PermissionRow : public SettingsRow {
    Q_OBJECT
public:
    PermissionRow(const Theme& theme, const QString& symbol, const QString& name, const QString& purpose,
                  QWidget* parent = nullptr);

    void setGranted(bool isGranted);
    [[nodiscard]] bool isGranted() const { return m_isGranted; }
    [[nodiscard]] PushButton& requestButton() { return *m_request; }

Q_SIGNALS:
    void requested();

private:
    bool m_isGranted = false;
    QHBoxLayout* m_stateLine = nullptr;
    SymbolView* m_granted;
    SymbolView* m_missing;
    ThemedLabel* m_word;
    PushButton* m_request;
};

} // namespace tessary
