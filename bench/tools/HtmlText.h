#pragma once

#include <QString>
#include <QStringList>

namespace tessary::bench {

/// What a page of documentation says, without its markup, each list in the order of the page.
struct HtmlText {
    QStringList paragraphs; ///< Blanks and line breaks are one blank each.
    QStringList code;       ///< Preformatted pieces, with their lines.
};

[[nodiscard]] HtmlText htmlText(const QString& page);

} // namespace tessary::bench
