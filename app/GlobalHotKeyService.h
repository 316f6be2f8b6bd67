#pragma once

#include "app/HotKeyShortcut.h"
#include "platform/GlobalHotKeyFacility.h"

#include <QHash>
#include <QObject>
#include <QSet>

#include <functional>

namespace tessary {

/// Registers the program's own global shortcuts and runs an action when one is pressed. Main thread only.
class GlobalHotKeyService : public QObject {
    Q_OBJECT
public:
    enum class HotKey { QuickSearch = 0, LocalOCR = 1, ToggleMonitoring = 2 };
    /// What a press with a given identifier was to us.
    enum class Answer { Handled, NotHandled };

    /// One shortcut as it should be from now on. The action holds what it uses weakly.
    struct Request {
        HotKey hotKey;
        HotKeyShortcut shortcut;
        std::function<void()> action;
    };

    /// "TSRY", first character in the highest byte: marks our own hot keys.
    static constexpr quint32 kSignature = 0x54535259;

    /// @param facility outlives this.
    explicit GlobalHotKeyService(GlobalHotKeyFacility& facility, QObject* parent = nullptr);
    ~GlobalHotKeyService() override;

    /// Replaces the shortcuts, in order; a disabled one is only let go of.
    /// @returns those that the system refused. Calls must not overlap: the caller awaits one before the next.
    [[nodiscard]] QCoro::Task<QSet<HotKey>> registerAll(QList<Request> requests);
    /// Looks at a press and, when it is ours, runs its action in a later turn of the event loop.
    Answer handle(HotKeyIdentifier pressed);

private:
    void remove(quint32 id);

    GlobalHotKeyFacility& m_facility;
    QHash<quint32, GlobalHotKeyFacility::Reference> m_hotKeyReferences;
    QHash<quint32, std::function<void()>> m_actions;
};

[[nodiscard]] inline size_t qHash(GlobalHotKeyService::HotKey hotKey, size_t seed = 0) noexcept
{
    return ::qHash(static_cast<int>(hotKey), seed);
}

} // namespace tessary
