#include "search/SearchQueryParser.h"

#include <QRegularExpression>

namespace tessary::SearchQueryParser {
namespace {

/// Key, colon and value. Unicode's white space ends a value too, as it separates words.
const QRegularExpression& operators()
{
    static const QRegularExpression expression(
        QStringLiteral("(?i)(app|tag|before|after|is):(\"[^\"]+\"|\\S+)"),
        QRegularExpression::UseUnicodePropertiesOption);
    return expression;
}

QString withoutQuotesAround(QStringView value)
{
    while (value.startsWith(u'"'))
        value = value.sliced(1);
    while (value.endsWith(u'"'))
        value = value.chopped(1);
    return value.toString();
}

/// The expression refuses a whole text for half a surrogate pair, and no stored text holds one.
QString withWholeCharacters(const QString& text)
{
    return text.isValidUtf16() ? text : QString::fromUtf8(text.toUtf8());
}

void apply(const QString& key, const QString& value, const Calendar& calendar, SearchQuery& query)
{
    if (key == QLatin1String("app"))
        query.appName = value;
    else if (key == QLatin1String("tag"))
        query.tagName = value;
    else if (key == QLatin1String("before"))
        query.before = calendar.date(value);
    else if (key == QLatin1String("after"))
        query.after = calendar.date(value);
    else if (key == QLatin1String("is") && value.toLower() == QLatin1String("favorite"))
        query.favoritesOnly = true;
}

QStringList words(QStringView text)
{
    QStringList words;
    qsizetype start = 0;
    for (qsizetype end = 0; end <= text.size(); ++end) {
        if (end < text.size() && !text.at(end).isSpace())
            continue;
        if (end > start)
            words.append(text.sliced(start, end - start).toString());
        start = end + 1;
    }
    return words;
}

} // namespace

SearchQuery parse(const QString& text, const Calendar& calendar)
{
    const QString trimmed = withWholeCharacters(text).trimmed();
    SearchQuery query;
    QString rest;
    qsizetype end = 0; // of what has been looked at
    QRegularExpressionMatchIterator matches = operators().globalMatch(trimmed);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        apply(match.captured(1).toLower(), withoutQuotesAround(match.capturedView(2)), calendar, query);
        rest += QStringView(trimmed).sliced(end, match.capturedStart() - end);
        end = match.capturedEnd();
    }
    rest += QStringView(trimmed).sliced(end);
    query.keywords = words(rest);
    return query;
}

QString removingOperator(const QString& text, const QString& key)
{
    const QString whole = withWholeCharacters(text);
    QStringList pieces;
    qsizetype end = 0;
    QRegularExpressionMatchIterator matches = operators().globalMatch(whole);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        if (match.captured(1).compare(key, Qt::CaseInsensitive) != 0)
            continue;
        pieces.append(whole.sliced(end, match.capturedStart() - end).trimmed());
        end = match.capturedEnd();
    }
    pieces.append(end == 0 ? whole : whole.sliced(end).trimmed());
    pieces.removeAll(QString());
    return pieces.join(QLatin1Char(' '));
}

} // namespace tessary::SearchQueryParser
