#pragma once

#include "store/ScreenshotRecord.h"

#include <QTextLayout>

namespace tessary {

/// The line that names an item in a list: the first line of a text, the name of a picture's file without
/// its extension. Without control characters, and never very long.
[[nodiscard]] QString rowTitle(const ScreenshotRecord& record);

/// A row's title as it is drawn into a width: shortened, with the matched keywords emphasised.
struct ShownTitle {
    QString text;
    QList<QTextLayout::FormatRange> emphasis;
};

/// Texts are cut at their end, file names in the middle.
[[nodiscard]] ShownTitle shownTitle(const ScreenshotRecord& record, const QStringList& keywords,
                                    const QFont& font, const QFont& emphasised, double width);

} // namespace tessary
