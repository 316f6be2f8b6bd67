#pragma once

#include "ui/kit/ImageLoader.h"

#include <QBasicTimer>
#include <QColor>
#include <QImage>
#include <QWidget>

namespace tessary {

/// Shows the picture in a file, fitted and centred, without blocking while it loads: first nothing, after
/// 150 ms a progress indicator, then the picture, or a symbol when there is none.
///
/// It loads while it is shown; what is still loading when it is hidden, goes away or gets another path is
/// forgotten, and loading starts again when it is shown again.
class AsyncFileImage : public QWidget {
    Q_OBJECT
public:
    using Loader = ImageLoader;

    enum class State { Idle, Loading, Shown, Unavailable };

    explicit AsyncFileImage(Loader loader, QWidget* parent = nullptr);
    ~AsyncFileImage() override;

    [[nodiscard]] const QString& path() const { return m_path; }
    /// In device pixels.
    [[nodiscard]] int maximumPixelSize() const { return m_maximumPixelSize; }
    /// An empty path shows the placeholder. The same values again do nothing.
    void setSource(const QString& path, int maximumPixelSize);
    /// The name of the symbol shown when no image can be had.
    [[nodiscard]] const QString& placeholderSystemImage() const { return m_placeholder; }
    void setPlaceholderSystemImage(const QString& name);
    /// By default the palette's placeholder text.
    void setPlaceholderColour(const QColor& colour);
    /// Whether the progress indicator may turn; it does by default.
    void setAnimated(bool isAnimated) { m_isAnimated = isAnimated; }

    [[nodiscard]] State state() const { return m_state; }
    [[nodiscard]] bool isProgressVisible() const { return m_spinner.isActive(); }
    [[nodiscard]] const QImage& image() const { return m_image; }
    /// Where the picture lies within the widget, never enlarged beyond its own pixels.
    [[nodiscard]] QRect imageRect() const;
    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void stateChanged(tessary::AsyncFileImage::State state);

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void paintProgress(QPainter& painter) const;

private:
    void load();
    void forget();
    void take(const QImage& image);
    void setState(State state);
    void paintPlaceholder(QPainter& painter) const;

    Loader m_loader;
    QString m_path;
    int m_maximumPixelSize = 0;
    QString m_placeholder;
    QColor m_placeholderColour;
    QImage m_image;
    State m_state = State::Idle;
    quint64 m_ticket = 0; // of the latest load; answers to older ones are dropped
    QBasicTimer m_patience;
    QBasicTimer m_spinner;
    int m_spinnerStep = 0;
    bool m_isAnimated = true;
};

} // namespace tessary
