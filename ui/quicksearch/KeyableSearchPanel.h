#pragma once

#include "ui/kit/FramedWindow.h"

namespace tessary {

/// The panel's window: borderless, floating above others, taking the keyboard.
class KeyableSearchPanel : public FramedWindow {
    Q_OBJECT
public:
    static constexpr QSize kSize{780, 540}; ///< Of its body; fixed.

    explicit KeyableSearchPanel(const Theme& theme);

Q_SIGNALS:
    void becameKey();
    void resignedKey();
    void resized();
    void closing();

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
};

} // namespace tessary
