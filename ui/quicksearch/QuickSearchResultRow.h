#pragma once

#include "store/ScreenshotRecord.h"
#include "ui/quicksearch/RowTitle.h"

#include <QColor>
#include <QCoreApplication>

class QPainter;
class QRect;

namespace tessary {

class Theme;
class TileImages;

/// One row of the result list, drawn.
class QuickSearchResultRow {
    Q_DECLARE_TR_FUNCTIONS(QuickSearchResultRow)
public:
    /// How it looks; what fades goes from 0 to 1.
    struct State {
        double selected = 0;
        double hovered = 0;
        bool hasRing = false; ///< The keyboard's focus is on the list.
    };

    QuickSearchResultRow(const ScreenshotRecord& record, State state) : m_record(record), m_state(state) {}

    /// How long ago: "刚刚", minutes, and from a day on days; there are no hours. The future is now.
    [[nodiscard]] static QString relativeMinuteText(Date date, Date now);
    /// "图片" or "文字".
    [[nodiscard]] static QString kindText(const ScreenshotRecord& record);
    /// The whole row in words, for those who cannot see it.
    [[nodiscard]] static QString accessibleText(const ScreenshotRecord& record, Date now);

    [[nodiscard]] static int height(const Theme& theme);
    /// What a title's width is in a row of that width.
    [[nodiscard]] static int titleWidth(const ScreenshotRecord& record, int rowWidth, const Theme& theme);
    void paint(QPainter& painter, const QRect& row, const Theme& theme, TileImages& tiles,
               const ShownTitle& title, Date now) const;

private:
    void paintBackground(QPainter& painter, const QRect& row, const Theme& theme) const;
    void paintTile(QPainter& painter, const QRect& tile, const Theme& theme, TileImages& tiles) const;
    void paintTitle(QPainter& painter, const QRect& area, const Theme& theme, const ShownTitle& title) const;
    void paintCaption(QPainter& painter, const QRect& area, const Theme& theme, Date now) const;
    void paintMarks(QPainter& painter, const QRect& row, const Theme& theme) const;
    /// Of something that has the first colour at rest and the second when selected.
    [[nodiscard]] QColor colour(const QColor& rest, const QColor& selected) const;

    const ScreenshotRecord& m_record;
    State m_state;
};

} // namespace tessary
