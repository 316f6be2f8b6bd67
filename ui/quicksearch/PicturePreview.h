#pragma once

#include "ui/kit/AsyncFileImage.h"

namespace tessary {

class EmptyState;
class Theme;

/// The selected picture, fitted, framed and never enlarged. Its thumbnail stands in until the picture itself
/// is there, and what there is until a larger one is when the view grows.
class PicturePreview : public AsyncFileImage {
    Q_OBJECT
public:
    PicturePreview(const Theme& theme, Loader loader, QWidget* parent = nullptr);

    /// @param pixelSize of the picture as its header has it, perhaps lying on its side.
    void setPicture(const QString& path, const QString& thumbnailPath, const QSize& pixelSize);
    /// Shows nothing and lets go of the picture.
    void clear();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void applyTheme();
    void loadStandIn(const QString& path);
    void paintPicture(QPainter& painter, const QImage& image) const;
    [[nodiscard]] QSize room() const;
    [[nodiscard]] QRect pictureRect(const QImage& image) const;
    [[nodiscard]] int wantedPixels() const;

    const Theme& m_theme;
    Loader m_loader;
    EmptyState* m_missing;
    QSize m_pixelSize;
    QImage m_standIn;
    quint64 m_ticket = 0; // answers to older requests for a stand-in are dropped
};

} // namespace tessary
