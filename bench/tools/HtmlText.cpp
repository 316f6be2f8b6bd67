#include "bench/tools/HtmlText.h"

#include <QRegularExpression>

#include <array>
#include <utility>

namespace tessary::bench {
namespace {

QString withoutMarkup(const QString& html)
{
    static const QRegularExpression tag(QStringLiteral("<[^>]*>"));
    static const QRegularExpression number(QStringLiteral("&#(x?)([0-9a-fA-F]{1,6});"));
    QString text = html;
    text.remove(tag);
    QRegularExpressionMatch match = number.match(text);
    while (match.hasMatch()) {
        const char32_t character = match.captured(2).toUInt(nullptr, match.captured(1).isEmpty() ? 10 : 16);
        const QString decoded = QString::fromUcs4(&character, 1);
        text.replace(match.capturedStart(), match.capturedLength(), decoded);
        match = number.match(text, match.capturedStart() + decoded.size());
    }
    constexpr std::array<std::pair<const char*, char16_t>, 5> kNamed{
        {{"&lt;", u'<'}, {"&gt;", u'>'}, {"&quot;", u'"'}, {"&nbsp;", u' '}, {"&amp;", u'&'}}};
    for (const auto& [name, character] : kNamed)
        text.replace(QLatin1String(name), QString(QChar(character)));
    return text;
}

/// One line; a line break within a sentence of Chinese or Japanese is no blank.
QString inOneLine(const QString& text)
{
    static const QRegularExpression lineBreak(
        QStringLiteral("(?<=[\\x{3000}-\\x{9fff}\\x{ff00}-\\x{ffef}])\\s*\\n\\s*"
                       "(?=[\\x{3000}-\\x{9fff}\\x{ff00}-\\x{ffef}])"));
    return QString(text).remove(lineBreak).simplified();
}

} // namespace

HtmlText htmlText(const QString& page)
{
    static const QRegularExpression element(QStringLiteral("<(p|pre)\\b[^>]*>(.*?)</\\1>"),
                                            QRegularExpression::DotMatchesEverythingOption);
    HtmlText text;
    QRegularExpressionMatchIterator matches = element.globalMatch(page);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const QString inner = withoutMarkup(match.captured(2));
        if (match.captured(1) == QLatin1String("pre"))
            text.code.append(inner.trimmed());
        else
            text.paragraphs.append(inOneLine(inner));
    }
    return text;
}

} // namespace tessary::bench
