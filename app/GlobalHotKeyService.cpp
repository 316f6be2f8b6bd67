#include "app/GlobalHotKeyService.h"

namespace tessary {

GlobalHotKeyService::GlobalHotKeyService(GlobalHotKeyFacility& facility, QObject* parent)
    : QObject(parent),
      m_facility(facility)
{
    m_facility.setHandler([this](HotKeyIdentifier pressed) { handle(pressed); });
}

GlobalHotKeyService::~GlobalHotKeyService()
{
    for (const GlobalHotKeyFacility::Reference reference : std::as_const(m_hotKeyReferences))
        m_facility.unregister(reference);
    m_facility.setHandler({});
}

QCoro::Task<QSet<GlobalHotKeyService::HotKey>> GlobalHotKeyService::registerAll(QList<Request> requests)
{
    QSet<HotKey> conflicts;
    for (const Request& request : requests) {
        const quint32 id = static_cast<quint32>(request.hotKey) + 1;
        remove(id);
        if (request.shortcut.isDisabled())
            continue;
        const HotKeyIdentifier identifier{kSignature, id};
        const std::optional<GlobalHotKeyFacility::Reference> reference = co_await m_facility.registerHotKey(
            *request.shortcut.keyCode, request.shortcut.modifiers, identifier);
        if (!reference) {
            conflicts.insert(request.hotKey);
            continue;
        }
        m_hotKeyReferences.insert(id, *reference);
        m_actions.insert(id, request.action);
    }
    co_return conflicts;
}

GlobalHotKeyService::Answer GlobalHotKeyService::handle(HotKeyIdentifier pressed)
{
    if (pressed.signature != kSignature)
        return Answer::NotHandled;
    const auto run = [this, id = pressed.id] {
        // Copied: the action may register the shortcuts anew.
        const std::function<void()> action = m_actions.value(id);
        if (action)
            action();
    };
    QMetaObject::invokeMethod(this, run, Qt::QueuedConnection);
    return Answer::Handled;
}

void GlobalHotKeyService::remove(quint32 id)
{
    if (const auto reference = m_hotKeyReferences.constFind(id); reference != m_hotKeyReferences.constEnd()) {
        m_facility.unregister(*reference);
        m_hotKeyReferences.erase(reference);
    }
    m_actions.remove(id);
}

} // namespace tessary
