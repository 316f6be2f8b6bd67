#pragma once

#include "ui/quicksearch/RowFade.h"
#include "ui/quicksearch/RowTitle.h"

#include <QAbstractItemDelegate>
#include <QHash>

namespace tessary {

class ResultListModel;
class Theme;
class TileImages;

/// Draws the rows of the result list. Shortened titles are kept, since shaping them is what takes time.
class ResultRowDelegate : public QAbstractItemDelegate {
    Q_OBJECT
public:
    ResultRowDelegate(const Theme& theme, const ResultListModel& model, TileImages& tiles, QObject* parent);

    /// What is emphasised in titles.
    void setKeywords(const QStringList& keywords);
    /// The last row is being worked on.
    void setLoadingMore(bool isLoading) { m_isLoadingMore = isLoading; }

    /// Which row looks selected, and which one has the pointer over it.
    [[nodiscard]] RowFade& selection() { return m_selection; }
    [[nodiscard]] RowFade& hover() { return m_hover; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    struct KeptTitle {
        QString source;
        int width = 0;
        ShownTitle shown;
    };

    [[nodiscard]] const ShownTitle& titleOf(const ScreenshotRecord& record, int rowWidth) const;
    void paintLoadMore(QPainter& painter, const QStyleOptionViewItem& option) const;

    const Theme& m_theme;
    const ResultListModel& m_model;
    TileImages& m_tiles;
    RowFade m_selection;
    RowFade m_hover;
    QStringList m_keywords;
    bool m_isLoadingMore = false;
    mutable QHash<QUuid, KeptTitle> m_titles;
};

} // namespace tessary
