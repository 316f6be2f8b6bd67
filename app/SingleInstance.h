#pragma once

#include <QObject>

namespace tessary {

/// The program's presence on the session bus: holds its name, so that a second start finds the first.
///
/// Bus interface `com.tessary.Tessary1` on `/com/tessary/Tessary`: `ShowPanel()`.
class SingleInstance : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.tessary.Tessary1")
public:
    enum class Outcome {
        First,     ///< The name is ours.
        HandedOver ///< Another runs and was asked to show its panel.
    };

    using QObject::QObject;

    /// Once, at start-up. Without a session bus every start is the first.
    [[nodiscard]] Outcome claim();

public Q_SLOTS:
    /// Called over the bus.
    void ShowPanel() { Q_EMIT panelRequested(); }

Q_SIGNALS:
    void panelRequested();
};

} // namespace tessary
