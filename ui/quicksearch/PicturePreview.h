#pragma once

#include <QBasicTimer>
#include <QImage>
#include <QWidget>

#include <qcoro/qcorotask.h>

#include <functional>

namespace tessary {

class EmptyState;
class Spinner;
class Theme;

/// A picture, fitted and never enlarged. Its thumbnail stands in until the picture itself is there.
class PicturePreview : public QWidget {
    Q_OBJECT
public:
    /// Brings a file's picture, its longer side at most that many pixels; a null image when it cannot be had.
    using Loader = std::function<QCoro::Task<QImage>(QString path, int maximumPixelSize)>;

    PicturePreview(const Theme& theme, Loader loader, QWidget* parent = nullptr);

    /// @param pixelSize of the picture; the thumbnail is shown at that size, fitted.
    void show(const QString& path, const QString& thumbnailPath, const QSize& pixelSize);
    /// Shows nothing and lets go of the picture.
    void clear();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void load(const QString& path, bool isThumbnail);
    void takeThumbnail(const QImage& image);
    void takePicture(const QImage& image);
    [[nodiscard]] QRect pictureRect() const;
    [[nodiscard]] int wantedPixels() const;

    const Theme& m_theme;
    Loader m_loader;
    EmptyState* m_missing;
    Spinner* m_spinner;
    QString m_path;
    QSize m_pixelSize;
    QImage m_image;
    quint64 m_ticket = 0; // answers to older requests are dropped
    bool m_isSharp = false;
    QBasicTimer m_patience;
};

} // namespace tessary
