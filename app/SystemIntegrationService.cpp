#include "app/SystemIntegrationService.h"

#include "platform/LoginItem.h"
#include "platform/PrivacySettings.h"

namespace tessary {

SystemIntegrationService::SystemIntegrationService(LoginItem& loginItem, PrivacySettings& privacySettings)
    : m_loginItem(loginItem),
      m_privacySettings(privacySettings)
{
}

QCoro::Task<> SystemIntegrationService::setLaunchAtLogin(bool enabled)
{
    auto entrance = m_turn.enter(QStringLiteral("login item"));
    const KeyedGate::Pass pass = co_await entrance;
    const bool isEnabled = co_await m_loginItem.isEnabled();
    if (enabled == isEnabled)
        co_return;
    if (enabled)
        co_await m_loginItem.enable();
    else
        co_await m_loginItem.disable();
}

QCoro::Task<> SystemIntegrationService::openPrivacySettings(QString anchor)
{
    co_await m_privacySettings.open(anchor);
}

} // namespace tessary
