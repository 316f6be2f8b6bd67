#pragma once

#include "app/HotKeyShortcut.h"

#include <QBasicTimer>
#include <QWidget>

#include <functional>
#include <optional>

namespace tessary {

class WindowEffects;

/// Takes the keyboard and waits for a combination. Placed while recording, with the focus; sees everything
/// that is pressed, what other programs and the desktop react to included.
///
/// When it has ended it keeps the keyboard until the key is up: a key that goes on being held would
/// otherwise set off the very shortcut that it has become, or close the window. `finished` comes then.
class HotKeyCaptureView : public QWidget {
    Q_OBJECT
public:
    /// Why a combination cannot be a shortcut.
    enum class Refusal {
        OnlyShift,  ///< Typing a capital letter would set it off.
        UnknownKey, ///< A key that has no code.
    };

    HotKeyCaptureView(WindowEffects& effects, QWidget* parent);
    ~HotKeyCaptureView() override;

    /// @returns false while another program has the keyboard; nothing is recorded then.
    [[nodiscard]] bool begin();
    /// Ends without a combination.
    void cancel();

    /// Judges a key that was pressed.
    void capture(const QKeyEvent& event);

Q_SIGNALS:
    void captured(const tessary::HotKeyShortcut& shortcut);
    /// Nothing changes.
    void cancelled();
    /// That was none; recording goes on.
    void refused(tessary::HotKeyCaptureView::Refusal refusal);
    /// The keyboard is back with everyone.
    void finished();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    enum class State { Idle, Recording, KeyHeld, Ended };

    void waitForRelease();
    void finish();

    WindowEffects& m_effects;
    State m_state = State::Idle;
    quintptr m_window = 0; // that has the keyboard
    QBasicTimer m_patience;
};

} // namespace tessary
