#include "ui/quicksearch/ResultListModel.h"

#include "ui/quicksearch/QuickSearchResultRow.h"

#include <algorithm>

namespace tessary {

ResultListModel::ResultListModel(Clock& clock, QObject* parent) : QAbstractListModel(parent), m_clock(clock)
{
}

void ResultListModel::update(const QList<ScreenshotRecord>& records, bool hasMore)
{
    const auto isSame = [](const ScreenshotRecord& one, const ScreenshotRecord& other) {
        return one.id == other.id;
    };
    const auto [oldHead, newHead] =
        std::mismatch(m_records.cbegin(), m_records.cend(), records.cbegin(), records.cend(), isSame);
    const qsizetype head = oldHead - m_records.cbegin();
    const auto [oldTail, newTail] =
        std::mismatch(m_records.crbegin(), std::make_reverse_iterator(oldHead), records.crbegin(),
                      std::make_reverse_iterator(newHead), isSame);
    const qsizetype tail = oldTail - m_records.crbegin();
    if (!hasMore)
        setHasMore(false);
    replace(head, m_records.size() - head - tail, records, records.size() - head - tail);
    m_records = records; // the same items, perhaps changed
    if (!m_records.isEmpty())
        Q_EMIT dataChanged(index(0), index(static_cast<int>(m_records.size()) - 1));
    if (hasMore)
        setHasMore(true);
}

void ResultListModel::replace(qsizetype first, qsizetype removed, const QList<ScreenshotRecord>& records,
                              qsizetype inserted)
{
    const auto row = [](qsizetype value) { return static_cast<int>(value); };
    if (removed > 0) {
        beginRemoveRows({}, row(first), row(first + removed) - 1);
        m_records.remove(first, removed);
        endRemoveRows();
    }
    if (inserted > 0) {
        beginInsertRows({}, row(first), row(first + inserted) - 1);
        m_records = records;
        endInsertRows();
    }
}

void ResultListModel::setHasMore(bool hasMore)
{
    if (m_hasMore == hasMore)
        return;
    const int last = static_cast<int>(m_records.size());
    if (hasMore) {
        beginInsertRows({}, last, last);
        m_hasMore = true;
        endInsertRows();
    } else {
        beginRemoveRows({}, last, last);
        m_hasMore = false;
        endRemoveRows();
    }
}

const ScreenshotRecord* ResultListModel::record(int row) const
{
    return row >= 0 && row < m_records.size() ? &m_records.at(row) : nullptr;
}

int ResultListModel::rowCount(const QModelIndex& parent) const
{
    if (parent.isValid())
        return 0;
    return static_cast<int>(m_records.size()) + (m_hasMore ? 1 : 0);
}

QVariant ResultListModel::data(const QModelIndex& index, int role) const
{
    const ScreenshotRecord* item = record(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return item != nullptr ? rowTitle(*item) : loadMoreText();
    case Qt::AccessibleTextRole:
        return item != nullptr ? QuickSearchResultRow::accessibleText(*item, now()) : loadMoreText();
    default:
        return {};
    }
}

QString ResultListModel::loadMoreText()
{
    return tr("加载更多");
}

} // namespace tessary
