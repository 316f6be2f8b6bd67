#pragma once

#include <QWidget>

namespace tessary {

class PreviewDetailView;
class Theme;

/// The window around a preview. It does not close before it is settled what becomes of unsaved edits.
class PreviewWindow : public QWidget {
    Q_OBJECT
public:
    /// @param view belongs to the window from now on.
    PreviewWindow(const Theme& theme, PreviewDetailView* view);

Q_SIGNALS:
    void willClose();

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    PreviewDetailView* m_view;
};

} // namespace tessary
