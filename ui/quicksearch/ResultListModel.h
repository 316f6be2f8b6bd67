#pragma once

#include "platform/Clock.h"
#include "store/ScreenshotRecord.h"

#include <QAbstractListModel>

namespace tessary {

/// The rows of the result list: the items that are loaded, and a last row that loads more while there are
/// more. Changes from one list to the next only what differs, so that nothing jumps.
class ResultListModel : public QAbstractListModel {
    Q_OBJECT
public:
    explicit ResultListModel(Clock& clock, QObject* parent = nullptr);

    void update(const QList<ScreenshotRecord>& records, bool hasMore);
    [[nodiscard]] const QList<ScreenshotRecord>& records() const { return m_records; }
    /// Null for the row that loads more.
    [[nodiscard]] const ScreenshotRecord* record(int row) const;
    [[nodiscard]] Date now() const { return m_clock.now(); }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

    /// The text of the last row while there are more.
    [[nodiscard]] static QString loadMoreText();

private:
    void replace(qsizetype first, qsizetype removed, const QList<ScreenshotRecord>& records,
                 qsizetype inserted);
    void setHasMore(bool hasMore);

    Clock& m_clock;
    QList<ScreenshotRecord> m_records;
    bool m_hasMore = false;
};

} // namespace tessary
