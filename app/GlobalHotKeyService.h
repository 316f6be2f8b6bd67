#pragma once

#include "app/HotKeyShortcut.h"
#include "platform/GlobalHotKeyFacility.h"

#include <QList>
#include <QObject>
#include <QSet>

#include <functional>
#include <map>

namespace tessary {

/// The registry of our global shortcuts: registers combinations with the session and calls an action when
/// one is pressed. Main thread only.
class GlobalHotKeyService : public QObject {
    Q_OBJECT
public:
    enum class HotKey { QuickSearch = 0, LocalOCR = 1, ToggleMonitoring = 2 };
    using Action = std::function<void()>;
    struct Binding {
        HotKey hotKey;
        HotKeyShortcut shortcut;
        Action action;
    };
    enum class EventResult { Handled, NotHandled };

    /// "TSRY", the first character in the highest byte. Marks all of our combinations.
    static constexpr quint32 kSignature = 0x54535259;

    explicit GlobalHotKeyService(GlobalHotKeyFacility& facility);
    /// Unregisters everything.
    ~GlobalHotKeyService() override;

    /// Replaces the registrations of the given shortcuts, in order; a disabled one is no conflict.
    /// @returns those that could not be registered.
    [[nodiscard]] QCoro::Task<QSet<HotKey>> registerHotKeys(QList<Binding> bindings);
    /// A combination was pressed: its action runs from the event loop, after this has returned. One that
    /// is not marked as ours is not handled.
    EventResult hotKeyPressed(HotKeyIdentifier identifier);
    /// What was typed since a press goes to the window that has the focus.
    void releaseKeyboard() { m_facility.releaseKeyboard(); }
    /// The same as soon as that window has the focus.
    void releaseKeyboardTo(quintptr window) { m_facility.releaseKeyboardTo(window); }

private:
    void release(quint32 id);

    GlobalHotKeyFacility& m_facility;
    std::map<quint32, GlobalHotKeyFacility::Reference> m_hotKeyReferences; // by id
    std::map<quint32, Action> m_actions;                                   // by id
};

[[nodiscard]] inline size_t qHash(GlobalHotKeyService::HotKey hotKey, size_t seed = 0) noexcept
{
    return ::qHash(static_cast<int>(hotKey), seed);
}

} // namespace tessary
