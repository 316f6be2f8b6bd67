#pragma once

#include <QByteArray>
#include <QString>

namespace tessary {

/// Whether a file of that name, without its extension, is taken for a screenshot: by its beginning. However
/// the file system composes accented letters, they count as the same.
[[nodiscard]] bool beginsLikeScreenshot(const QString& baseName);

/// The name of an entry of a folder, any bytes: whether it begins like a screenshot's and has the extension
/// of a picture. Quick for those that have not.
[[nodiscard]] bool isScreenshotName(const QByteArray& name);

} // namespace tessary
