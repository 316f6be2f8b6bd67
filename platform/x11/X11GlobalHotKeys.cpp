#include "platform/x11/X11GlobalHotKeys.h"

#include "platform/linux/VirtualKeys.h"
#include "platform/x11/X11Call.h"

namespace tessary {

X11GlobalHotKeys::X11GlobalHotKeys()
    : m_loop("tessary-keys"),
      m_grabs(m_loop, [this](HotKeyIdentifier identifier) { deliver(identifier); })
{
    m_loop.addHandler([this](const xcb_generic_event_t& event) { m_grabs.handle(event); });
    m_loop.start();
}

X11GlobalHotKeys::~X11GlobalHotKeys()
{
    // The server lets go of the grabs together with the connection.
    m_loop.stop();
}

QCoro::Task<std::optional<GlobalHotKeyFacility::Reference>>
X11GlobalHotKeys::registerHotKey(quint32 keyCode, quint32 modifiers, HotKeyIdentifier identifier)
{
    const std::optional<quint8> keycode = keycodeOfVirtualKey(keyCode);
    if (!keycode)
        co_return std::nullopt;
    const Reference reference = ++m_lastReference;
    std::function<bool()> add = [this, reference, key = *keycode, modifiers, identifier] {
        return m_grabs.add(reference, key, modifiers, identifier);
    };
    const bool granted = co_await X11Call<bool>(m_loop, std::move(add));
    if (!granted)
        co_return std::nullopt;
    co_return reference;
}

void X11GlobalHotKeys::releaseKeyboard()
{
    m_loop.post([this] { m_grabs.releaseKeyboard(); });
}

void X11GlobalHotKeys::releaseKeyboardTo(quintptr window)
{
    m_loop.post([this, window] { m_grabs.releaseKeyboardTo(static_cast<xcb_window_t>(window)); });
}

void X11GlobalHotKeys::unregister(Reference reference)
{
    m_loop.post([this, reference] { m_grabs.remove(reference); });
}

void X11GlobalHotKeys::deliver(HotKeyIdentifier identifier)
{
    const auto call = [this, identifier] {
        if (m_handler)
            m_handler(identifier);
    };
    QMetaObject::invokeMethod(&m_context, call, Qt::QueuedConnection);
}

} // namespace tessary
