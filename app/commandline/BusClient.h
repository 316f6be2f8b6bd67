#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>

#include <functional>

namespace tessary {

/// Calls the running Tessary over the session bus, and starts it where none runs. Waits for its answers: only
/// for a process that does nothing else.
class BusClient {
public:
    /// Whether the program that was started has ended without taking its name.
    using HasEnded = std::function<bool()>;
    /// Starts Tessary in the background. @throws CommandError.
    using Start = std::function<HasEnded()>;

    /// How long an answer may take.
    enum class Patience {
        Ordinary, ///< A minute: the library may just be opening.
        Endless   ///< For work that takes as long as there is of it.
    };

    /// @throws CommandError without a session bus.
    explicit BusClient(Start start);

    /// Starts Tessary where it does not run, and waits until it can be called. @throws CommandError.
    void ensureRunning();
    /// @returns the answer's arguments. @throws CommandError.
    QVariantList call(const QString& method, const QVariantList& arguments = {},
                      Patience patience = Patience::Ordinary);
    /// Sends a call without waiting; its answer is for `result`.
    [[nodiscard]] QDBusPendingCall begin(const QString& method, const QVariantList& arguments);
    /// Waits for the answer. @throws CommandError.
    static QVariantList result(QDBusPendingCall call);
    /// Calls the slot, which takes the kind and the identifiers, at each change. @returns whether it is
    /// heard.
    [[nodiscard]] bool followChanges(QObject* receiver, const char* slot);
    [[nodiscard]] const QDBusConnection& bus() const { return m_bus; }

private:
    [[nodiscard]] bool isRunning();
    static QVariantList argumentsOf(const QDBusMessage& answer);

    QDBusConnection m_bus;
    Start m_start;
};

} // namespace tessary
