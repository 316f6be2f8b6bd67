#pragma once

#include "platform/WindowEffects.h"

#include <QHash>
#include <QList>

#include <utility>

namespace tessary::testing {

/// A window system that takes notes.
class FakeWindowEffects : public WindowEffects {
    Q_OBJECT
public:
    [[nodiscard]] bool isComposited() const override { return m_isComposited; }
    void setFloating(quintptr window) override { floating = window; }
    void setListed(quintptr window, bool isListed) override { listed[window].append(isListed); }
    void setInputRegion(quintptr, const QRect& region, qreal) override { inputRegion = region; }
    void activate(quintptr window) override { activated = window; }
    [[nodiscard]] bool takeInput(quintptr window) override
    {
        ++attempts;
        if (isInputTaken)
            return false;
        inputWindow = window;
        return true;
    }
    void releaseInput(quintptr window) override
    {
        if (inputWindow == window)
            inputWindow = 0;
    }
    [[nodiscard]] bool takeKeyboard(quintptr window) override
    {
        if (isInputTaken)
            return false;
        keyboardWindow = window;
        return true;
    }
    void releaseKeyboard(quintptr window) override
    {
        if (keyboardWindow == window)
            keyboardWindow = 0;
    }
    [[nodiscard]] std::optional<quint32> virtualKey(quint32 nativeScanCode) const override
    {
        const auto found = virtualKeys.constFind(nativeScanCode);
        return found != virtualKeys.cend() ? std::optional(*found) : std::nullopt;
    }

    void setComposited(bool isComposited)
    {
        if (std::exchange(m_isComposited, isComposited) != isComposited)
            Q_EMIT compositedChanged();
    }

    QHash<quintptr, QList<bool>> listed; ///< What was asked for each window, in order.
    QRect inputRegion;
    quintptr floating = 0;
    quintptr activated = 0;
    quintptr inputWindow = 0;            ///< That has pointer and keyboard for itself.
    quintptr keyboardWindow = 0;         ///< That has every key for itself.
    QHash<quint32, quint32> virtualKeys; ///< By the number of the key.
    bool isInputTaken = false;           ///< By another program.
    int attempts = 0;                    ///< To take them.

private:
    bool m_isComposited = false;
};

} // namespace tessary::testing
