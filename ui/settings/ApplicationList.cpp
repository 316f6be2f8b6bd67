#include "ui/settings/ApplicationList.h"

#include "platform/ApplicationIcons.h"
#include "ui/kit/OverlayScrollBar.h"
#include "ui/kit/Theme.h"
#include "ui/settings/ApplicationRowDelegate.h"

#include <qcoro/qcorotask.h>

#include <cmath>

namespace tessary {
namespace {

constexpr int kIcon = 20;

} // namespace

ApplicationList::ApplicationList(const Theme& theme, ApplicationIcons& icons, QWidget* parent)
    : QListWidget(parent),
      m_theme(theme),
      m_icons(icons)
{
    setItemDelegate(new ApplicationRowDelegate(theme, this));
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setMouseTracking(true);
    setAccessibleName(tr("已安装的 App"));
    new OverlayScrollBar(theme, *this);
    applyTheme();
    connect(&theme, &Theme::changed, this, &ApplicationList::applyTheme);
}

void ApplicationList::applyTheme()
{
    QPalette palette = m_theme.palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    setPalette(palette);
    setFont(m_theme.font(Theme::kBodySize));
    scheduleDelayedItemsLayout();
}

void ApplicationList::setApplications(const QList<InstalledApplication>& applications)
{
    clear();
    m_applications = applications;
    for (const InstalledApplication& application : applications) {
        auto* item = new QListWidgetItem(application.name, this);
        item->setToolTip(application.bundleIdentifier);
    }
    setCurrentRow(applications.isEmpty() ? -1 : 0);
    loadIcon(0);
}

/// One after the other; most lists are looked at from their beginning.
void ApplicationList::loadIcon(int row)
{
    if (row >= m_applications.size())
        return;
    const QUrl url = m_applications.at(row).bundleURL;
    const int pixels = static_cast<int>(std::ceil(kIcon * devicePixelRatioF()));
    QCoro::connect(m_icons.icon(url, pixels), this, [this, row, url](const QImage& icon) {
        if (row >= m_applications.size() || m_applications.at(row).bundleURL != url)
            return; // another list by now
        if (!icon.isNull())
            item(row)->setData(Qt::DecorationRole, icon);
        loadIcon(row + 1);
    });
}

void ApplicationList::narrow(const QString& text)
{
    const QString wanted = text.trimmed();
    int first = -1;
    for (int row = 0; row < count(); ++row) {
        const InstalledApplication& application = m_applications.at(row);
        const bool matches = application.name.contains(wanted, Qt::CaseInsensitive) ||
                             application.bundleIdentifier.contains(wanted, Qt::CaseInsensitive);
        item(row)->setHidden(!matches);
        if (matches && first < 0)
            first = row;
    }
    setCurrentRow(first);
}

std::optional<InstalledApplication> ApplicationList::selected() const
{
    const int row = currentRow();
    if (row < 0 || row >= m_applications.size() || item(row)->isHidden())
        return std::nullopt;
    return m_applications.at(row);
}

int ApplicationList::shownCount() const
{
    int shown = 0;
    for (int row = 0; row < count(); ++row)
        shown += item(row)->isHidden() ? 0 : 1;
    return shown;
}

void ApplicationList::moveSelection(int step)
{
    for (int row = currentRow() + step; row >= 0 && row < count(); row += step) {
        if (!item(row)->isHidden())
            return setCurrentRow(row);
    }
}

} // namespace tessary
