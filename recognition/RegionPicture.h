#pragma once

#include "base/SerialLane.h"

#include <QImage>
#include <QWidget>

namespace tessary {

class Theme;

/// The captured region on a mat: fitted into it, never enlarged. Large ones are scaled on a thread of their
/// own and stand there roughly until then.
class RegionPicture : public QWidget {
    Q_OBJECT
public:
    /// @param image the region; its device pixel ratio says how large it was on the screen.
    RegionPicture(const Theme& theme, QImage image, QWidget* parent = nullptr);

    /// Where the picture lies, logical pixels; at least one on each side.
    [[nodiscard]] QRect pictureGeometry() const;
    /// The picture as it is drawn, in device pixels; null while a rough one stands in.
    [[nodiscard]] const QImage& scaled() const { return m_scaled; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void scale();
    [[nodiscard]] QSize wantedPixels() const;

    const Theme& m_theme;
    const QImage m_image;
    QImage m_scaled;
    quint64 m_ticket = 0;
    SerialLane m_lane;
};

} // namespace tessary
