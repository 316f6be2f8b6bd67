#pragma once

#include <QImage>
#include <QUrl>

#include <qcoro/qcorotask.h>

namespace tessary {

/// The icons of installed programs. Main thread only; files are read elsewhere.
class ApplicationIcons {
public:
    virtual ~ApplicationIcons() = default;
    /// The icon that the desktop file names, drawn smoothly into a square of that many pixels; a null
    /// image when it names none or the icon theme has no such icon.
    [[nodiscard]] virtual QCoro::Task<QImage> icon(QUrl bundleURL, int pixelSize) = 0;
};

} // namespace tessary
