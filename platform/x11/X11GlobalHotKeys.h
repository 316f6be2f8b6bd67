#pragma once

#include "platform/GlobalHotKeyFacility.h"
#include "platform/x11/KeyGrabs.h"
#include "platform/x11/X11EventLoop.h"

#include <QObject>

namespace tessary {

/// Global key combinations as key grabs on a connection of their own. Keys are found by position; command is
/// Super, option is Alt. One press is one call, however long the key is held.
class X11GlobalHotKeys : public GlobalHotKeyFacility {
public:
    /// @throws X11Error when there is no display.
    X11GlobalHotKeys();
    ~X11GlobalHotKeys() override;

    void setHandler(std::function<void(HotKeyIdentifier)> handler) override
    {
        m_handler = std::move(handler);
    }
    [[nodiscard]] QCoro::Task<std::optional<Reference>> registerHotKey(quint32 keyCode, quint32 modifiers,
                                                                       HotKeyIdentifier identifier) override;
    void releaseKeyboard() override;
    void releaseKeyboardTo(quintptr window) override;
    void unregister(Reference reference) override;

private:
    void deliver(HotKeyIdentifier identifier);

    std::function<void(HotKeyIdentifier)> m_handler; // main thread
    Reference m_lastReference = 0;                   // main thread
    QObject m_context;                               // presses on their way after us are dropped
    X11EventLoop m_loop;
    KeyGrabs m_grabs; // the loop's thread; needs the loop, which stops first
};

} // namespace tessary
