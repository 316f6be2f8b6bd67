#include "search/ScreenshotSort.h"

namespace tessary {

QString rawValue(ScreenshotSort sort)
{
    switch (sort) {
    case ScreenshotSort::Relevance:
        return QStringLiteral("relevance");
    case ScreenshotSort::Newest:
        return QStringLiteral("newest");
    case ScreenshotSort::Oldest:
        return QStringLiteral("oldest");
    case ScreenshotSort::RecentlyUsed:
        return QStringLiteral("recentlyUsed");
    case ScreenshotSort::FileSize:
        return QStringLiteral("fileSize");
    }
    Q_UNREACHABLE();
}

} // namespace tessary
