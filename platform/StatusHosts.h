#pragma once

#include <QObject>

namespace tessary {

/// Where the desktop shows the icons of programs that run in the background. Main thread only.
class StatusHosts : public QObject {
    Q_OBJECT
public:
    enum class Kind {
        Unknown,       ///< Not heard of yet.
        None,          ///< Nowhere at present; a panel may start at any time.
        Embedding,     ///< A tray that takes windows, and nothing better.
        StatusNotifier ///< A host on the session bus, which draws icon and menu itself.
    };

    using QObject::QObject;

    [[nodiscard]] virtual Kind kind() const = 0;

Q_SIGNALS:
    void changed();
};

} // namespace tessary
