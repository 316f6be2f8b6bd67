#include "capture/TextTitle.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kLongestTitle = 80;        // characters
constexpr qsizetype kExamined = 80 * 64; // UTF-16 units; no sensible character takes 64

bool isLineBreak(QChar unit)
{
    const char16_t code = unit.unicode();
    return (code >= u'\n' && code <= u'\r') || code == 0x85 || code == 0x2028 || code == 0x2029;
}

QString firstCharacters(QStringView line)
{
    const QString examined = line.left(kExamined).toString();
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, examined);
    for (int i = 0; i < kLongestTitle; ++i) {
        if (characters.toNextBoundary() < 0)
            return examined;
    }
    return examined.left(characters.position());
}

} // namespace

std::optional<QString> titleOf(QStringView text)
{
    while (!text.isEmpty()) {
        const auto end = std::find_if(text.cbegin(), text.cend(), isLineBreak);
        const QStringView line = text.left(end - text.cbegin()).trimmed();
        if (!line.isEmpty())
            return firstCharacters(line);
        text = text.mid(std::min<qsizetype>(end - text.cbegin() + 1, text.size()));
    }
    return std::nullopt;
}

} // namespace tessary
