#pragma once

#include "base/KeyedGate.h"

#include <QString>

#include <qcoro/qcorotask.h>

namespace tessary {

class LoginItem;
class PrivacySettings;

/// What ties the program to the desktop beyond its windows. Main thread only.
class SystemIntegrationService {
public:
    SystemIntegrationService(LoginItem& loginItem, PrivacySettings& privacySettings);

    /// Asks the system for nothing when it is so already. Calls take effect in their order.
    /// @throws FileError.
    [[nodiscard]] QCoro::Task<> setLaunchAtLogin(bool enabled);
    /// Opens the desktop's page of that anchor; where there is none nothing happens.
    [[nodiscard]] QCoro::Task<> openPrivacySettings(QString anchor);

private:
    LoginItem& m_loginItem;
    PrivacySettings& m_privacySettings;
    KeyedGate m_turn;
};

} // namespace tessary
