#pragma once

#include "platform/GlobalHotKeyFacility.h"
#include "platform/testing/NextTurn.h"

#include <QHash>
#include <QObject>
#include <QSet>

#include <utility>

namespace tessary::testing {

/// A keyboard whose keys a test presses. Registrations are decided when asked for and answered after a
/// turn of the event loop; presses arrive in the next turn.
class FakeGlobalHotKeyFacility : public GlobalHotKeyFacility {
public:
    /// Virtual key code and modifier mask.
    using Combination = std::pair<quint32, quint32>;

    void setHandler(std::function<void(HotKeyIdentifier)> handler) override
    {
        m_handler = std::move(handler);
    }
    [[nodiscard]] QCoro::Task<std::optional<Reference>> registerHotKey(quint32 keyCode, quint32 modifiers,
                                                                       HotKeyIdentifier identifier) override
    {
        const Combination combination(keyCode, modifiers);
        std::optional<Reference> reference;
        if (!m_takenByOthers.contains(combination) && !isRegistered(combination)) {
            reference = ++m_lastReference;
            m_registered.insert(*reference, {combination, identifier});
        }
        co_await NextTurn();
        co_return reference;
    }
    void releaseKeyboard() override { ++m_releases; }
    void releaseKeyboardTo(quintptr window) override
    {
        m_receiver = window;
        ++m_releases;
    }
    void unregister(Reference reference) override { m_registered.remove(reference); }

    /// Another program holds the combination.
    void take(Combination combination) { m_takenByOthers.insert(combination); }
    void free(Combination combination) { m_takenByOthers.remove(combination); }
    [[nodiscard]] bool isRegistered(Combination combination) const { return find(combination).has_value(); }
    [[nodiscard]] int registrations() const { return static_cast<int>(m_registered.size()); }
    /// How often what was typed after a press was let go.
    [[nodiscard]] int keyboardReleases() const { return m_releases; }
    /// The window that it was let go to last.
    [[nodiscard]] quintptr keyboardReceiver() const { return m_receiver; }
    /// Somebody presses the combination; nothing happens when it is not registered.
    void press(Combination combination)
    {
        if (const auto identifier = find(combination))
            deliver(*identifier);
    }
    /// The system hands over a press with that identifier, whoever it belongs to.
    void deliver(HotKeyIdentifier identifier)
    {
        const auto call = [this, identifier] {
            if (m_handler)
                m_handler(identifier);
        };
        QMetaObject::invokeMethod(&m_context, call, Qt::QueuedConnection);
    }

private:
    struct Registration {
        Combination combination;
        HotKeyIdentifier identifier;
    };

    [[nodiscard]] std::optional<HotKeyIdentifier> find(Combination combination) const
    {
        for (const Registration& registration : m_registered) {
            if (registration.combination == combination)
                return registration.identifier;
        }
        return std::nullopt;
    }

    std::function<void(HotKeyIdentifier)> m_handler;
    QSet<Combination> m_takenByOthers;
    QHash<Reference, Registration> m_registered;
    Reference m_lastReference = 0;
    int m_releases = 0;
    quintptr m_receiver = 0;
    QObject m_context;
};

} // namespace tessary::testing
