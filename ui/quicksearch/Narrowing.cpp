#include "ui/quicksearch/Narrowing.h"

#include "search/SearchQueryParser.h"

#include <QCoreApplication>

namespace tessary {
namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(Narrowing)
};

QString day(Date date, const Calendar& calendar)
{
    const auto seconds = static_cast<qint64>(date.secondsSince1970);
    return QDateTime::fromSecsSinceEpoch(seconds, calendar.timeZone).date().toString(Qt::ISODate);
}

} // namespace

QList<Narrowing> narrowings(const QString& query, ScreenshotScope scope, const Calendar& calendar)
{
    const SearchQuery parsed = SearchQueryParser::parse(query, calendar);
    QList<Narrowing> found;
    if (scope != ScreenshotScope::All)
        found.append({title(scope), {}});
    if (parsed.appName)
        found.append({Words::tr("来源 App：") + *parsed.appName, QStringLiteral("app")});
    if (parsed.tagName)
        found.append({Words::tr("标签：") + *parsed.tagName, QStringLiteral("tag")});
    if (parsed.before)
        found.append({Words::tr("早于 %1").arg(day(*parsed.before, calendar)), QStringLiteral("before")});
    if (parsed.after)
        found.append({Words::tr("自 %1 起").arg(day(*parsed.after, calendar)), QStringLiteral("after")});
    if (parsed.favoritesOnly)
        found.append({title(ScreenshotScope::Favorites), QStringLiteral("is")});
    return found;
}

} // namespace tessary
