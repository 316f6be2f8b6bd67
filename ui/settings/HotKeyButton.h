#pragma once

#include "app/HotKeyShortcut.h"
#include "ui/kit/FocusRing.h"
#include "ui/kit/HoverFade.h"

#include <QAbstractButton>

namespace tessary {

/// Shows a combination, or that one is being recorded, and asks to record another. Its text is the
/// combination in characters, of which those for keys are drawn as symbols.
class HotKeyButton : public QAbstractButton {
    Q_OBJECT
public:
    explicit HotKeyButton(const Theme& theme, QWidget* parent = nullptr);

    void setShortcut(const HotKeyShortcut& shortcut);
    void setRecording(bool isRecording);
    [[nodiscard]] bool isRecording() const { return m_isRecording; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void describe();
    void paintFace(QPainter& painter, const QRect& area) const;
    void paintKeys(QPainter& painter, const QRect& area) const;
    void paintRecording(QPainter& painter, const QRect& area) const;
    [[nodiscard]] int keysWidth() const;

    const Theme& m_theme;
    HotKeyShortcut m_shortcut;
    bool m_isRecording = false;
    HoverFade m_hover;
    FocusRing m_focusRing{*this};
};

} // namespace tessary
