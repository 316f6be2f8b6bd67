#pragma once

#include "platform/WindowEffects.h"
#include "recognition/RegionSelector.h"

#include <QObject>

#include <memory>
#include <vector>

class QMouseEvent;
class QScreen;

namespace tessary {

class Clock;
class RegionSelectionView;
class RegionSelectionWindow;
class Theme;

/// Covers every screen for as long as a rectangle is being selected. Main thread only.
class RegionSelectionController : public QObject, public RegionSelector {
    Q_OBJECT
public:
    RegionSelectionController(const Theme& theme, WindowEffects& effects, Clock& clock);
    ~RegionSelectionController() override;

    /// A selection under way is cancelled first.
    [[nodiscard]] QCoro::Task<Selection> begin(QList<ScreenPicture> pictures) override;
    void cancel() override;
    [[nodiscard]] bool isSelecting() const { return m_completion != nullptr; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Completion;

    void cover(const QList<ScreenPicture>& pictures);
    void coverScreen(QScreen& screen, const QImage& picture);
    QCoro::Task<> takeInput(std::shared_ptr<Completion> completion);
    [[nodiscard]] RegionSelectionWindow* windowUnderMouse() const;
    [[nodiscard]] RegionSelectionWindow* windowAt(const QPointF& globalPosition) const;
    void follow(const QMouseEvent& event);
    void select(const Screen& screen, const QRectF& rect);
    void finish(std::exception_ptr error, const std::optional<Selection>& selection);

    const Theme& m_theme;
    WindowEffects& m_effects;
    Clock& m_clock;
    std::vector<RegionSelectionWindow*> m_windows; // in the order of the screens
    RegionSelectionWindow* m_keyWindow = nullptr;  // the one with pointer and keyboard
    RegionSelectionWindow* m_dragged = nullptr;    // the one on which the button is down
    std::shared_ptr<Completion> m_completion;
    std::vector<QMetaObject::Connection> m_screenChanges;
};

} // namespace tessary
