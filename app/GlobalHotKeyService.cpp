#include "app/GlobalHotKeyService.h"

namespace tessary {
namespace {

quint32 idOf(GlobalHotKeyService::HotKey hotKey)
{
    return static_cast<quint32>(hotKey) + 1;
}

} // namespace

GlobalHotKeyService::GlobalHotKeyService(GlobalHotKeyFacility& facility) : m_facility(facility)
{
    m_facility.setHandler([this](HotKeyIdentifier identifier) { hotKeyPressed(identifier); });
}

GlobalHotKeyService::~GlobalHotKeyService()
{
    m_facility.setHandler({});
    for (const auto& [id, reference] : m_hotKeyReferences)
        m_facility.unregister(reference);
}

QCoro::Task<QSet<GlobalHotKeyService::HotKey>> GlobalHotKeyService::registerHotKeys(QList<Binding> bindings)
{
    QSet<HotKey> conflicts;
    for (const Binding& binding : bindings) {
        const quint32 id = idOf(binding.hotKey);
        release(id);
        if (binding.shortcut.isDisabled())
            continue;
        const HotKeyIdentifier identifier{kSignature, id};
        const std::optional<GlobalHotKeyFacility::Reference> reference = co_await m_facility.registerHotKey(
            *binding.shortcut.keyCode, binding.shortcut.modifiers, identifier);
        if (!reference) {
            conflicts.insert(binding.hotKey);
            continue;
        }
        release(id); // another registration may have come in between
        m_hotKeyReferences[id] = *reference;
        m_actions[id] = binding.action;
    }
    co_return conflicts;
}

GlobalHotKeyService::EventResult GlobalHotKeyService::hotKeyPressed(HotKeyIdentifier identifier)
{
    if (identifier.signature != kSignature)
        return EventResult::NotHandled;
    QMetaObject::invokeMethod(
        this,
        [this, id = identifier.id] {
            const auto found = m_actions.find(id);
            if (found == m_actions.end())
                return;
            const Action action = found->second; // it may register anew, which removes it
            action();
        },
        Qt::QueuedConnection);
    return EventResult::Handled;
}

void GlobalHotKeyService::release(quint32 id)
{
    if (const auto found = m_hotKeyReferences.find(id); found != m_hotKeyReferences.end()) {
        m_facility.unregister(found->second);
        m_hotKeyReferences.erase(found);
    }
    m_actions.erase(id);
}

} // namespace tessary
