#pragma once

#include <QObject>
#include <QRect>

#include <optional>

namespace tessary {

/// What windows without the desktop's frame need from the window system. Main thread only; never blocks.
class WindowEffects : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Whether windows may be translucent: a compositor runs.
    [[nodiscard]] virtual bool isComposited() const = 0;
    /// Keeps a window that is about to be shown out of taskbars and switchers, and on every workspace. To be
    /// called before each time it is shown.
    virtual void setFloating(quintptr window) = 0;
    /// Whether taskbars and switchers show an ordinary window. Takes effect at once for one that is shown;
    /// for others to be called before each time they are.
    virtual void setListed(quintptr window, bool isListed) = 0;
    /// Lets the pointer through everywhere but there.
    /// @param region logical pixels within the window.
    virtual void setInputRegion(quintptr window, const QRect& region, qreal devicePixelRatio) = 0;
    /// Asks for the keyboard for a window that is being shown because the person asked for it.
    virtual void activate(quintptr window) = 0;
    /// Gives a window that is shown everything that pointer and keyboard do, until it is released or gone.
    /// @returns false while another program has one of them.
    [[nodiscard]] virtual bool takeInput(quintptr window) = 0;
    virtual void releaseInput(quintptr window) = 0;
    /// Gives a window that is shown every key, also those that the desktop or other programs react to
    /// anywhere, until it is released or gone. @returns false while another program has the keyboard.
    [[nodiscard]] virtual bool takeKeyboard(quintptr window) = 0;
    virtual void releaseKeyboard(quintptr window) = 0;
    /// The classic virtual key code of a key by its place on the keyboard, whatever the layout.
    /// @param nativeScanCode as Qt's key events have it. @returns nothing for modifiers and unknown keys.
    [[nodiscard]] virtual std::optional<quint32> virtualKey(quint32 nativeScanCode) const = 0;

Q_SIGNALS:
    void compositedChanged();
};

} // namespace tessary
