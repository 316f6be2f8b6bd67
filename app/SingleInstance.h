#pragma once

#include <QObject>

namespace tessary {

/// The program's presence on the session bus: holds its name, so that a second start finds the first.
class SingleInstance {
public:
    enum class Outcome {
        First,     ///< The name is ours.
        HandedOver ///< Another runs, and was asked to show its panel if that was wished.
    };

    enum class IfAnother { ShowsItsPanel, IsLeftAlone };

    /// Once, at start-up. Without a session bus every start is the first.
    /// @param object whose adaptors are what others may call, from the moment the name is ours.
    [[nodiscard]] static Outcome claim(QObject& object, IfAnother ifAnother);
};

} // namespace tessary
