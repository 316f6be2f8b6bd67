#include "ui/quicksearch/FilterMenu.h"

namespace tessary {

QString sortTitle(ScreenshotSort sort)
{
    switch (sort) {
    case ScreenshotSort::Relevance:
        return FilterMenu::tr("综合相关性");
    case ScreenshotSort::Newest:
        return FilterMenu::tr("最新优先");
    case ScreenshotSort::Oldest:
        return FilterMenu::tr("最旧优先");
    case ScreenshotSort::RecentlyUsed:
        return FilterMenu::tr("最近使用");
    case ScreenshotSort::FileSize:
        return FilterMenu::tr("文件大小");
    }
    Q_UNREACHABLE();
}

FilterMenu::FilterMenu(const Theme& theme, bool isTranslucent, ScreenshotScope scope, ScreenshotSort sort,
                       QWidget* parent)
    : Menu(theme, isTranslucent, parent)
{
    addSection(tr("范围"));
    for (const ScreenshotScope each : kScreenshotScopes) {
        QAction* action = add(systemImage(each), tessary::title(each));
        action->setCheckable(true);
        action->setChecked(each == scope);
        connect(action, &QAction::triggered, this, [this, each] { Q_EMIT scopeChosen(each); });
    }
    addSeparator();
    addSection(tr("排序"));
    for (const ScreenshotSort each : kScreenshotSorts) {
        QAction* action = add({}, sortTitle(each));
        action->setCheckable(true);
        action->setChecked(each == sort);
        connect(action, &QAction::triggered, this, [this, each] { Q_EMIT sortChosen(each); });
    }
}

} // namespace tessary
