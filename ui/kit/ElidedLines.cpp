#include "ui/kit/ElidedLines.h"

#include <QFontMetrics>
#include <QTextLayout>

namespace tessary {

QString elidedLines(const QString& text, const QFont& font, int width, int maximumLines)
{
    constexpr qsizetype kEnough = 2'000; // no banner shows more
    const QString source = text.simplified().left(kEnough);
    QTextLayout layout(source, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    QStringList lines;
    while (lines.size() < maximumLines) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(width);
        const bool isLast = lines.size() + 1 == maximumLines;
        const QString rest = source.mid(line.textStart());
        const QString shown = rest.left(line.textLength());
        lines.append(isLast ? QFontMetrics(font).elidedText(rest, Qt::ElideRight, width) : shown.trimmed());
    }
    layout.endLayout();
    return lines.join(QLatin1Char('\n'));
}

} // namespace tessary
