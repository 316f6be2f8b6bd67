#pragma once

#include "store/ScreenshotRecord.h"
#include "ui/quicksearch/PicturePreview.h"

#include <QWidget>

class QStackedWidget;

namespace tessary {

class EmptyState;
class FactsPanel;
class TextPage;
class Theme;
class TileImages;

/// The right side of the panel: the selected item, as far as it fits, and the facts about it.
class DetailPane : public QWidget {
    Q_OBJECT
public:
    DetailPane(const Theme& theme, TileImages& tiles, PicturePreview::Loader loader,
               QWidget* parent = nullptr);

    void set(const std::optional<ScreenshotRecord>& record);
    /// Lets go of what is shown; it comes back with the next `set`.
    void clear();

private:
    void showText(const ScreenshotRecord& record, bool isCut);

    EmptyState* m_empty;
    TextPage* m_text;
    PicturePreview* m_picture;
    FactsPanel* m_facts;
    QStackedWidget* m_preview;
    QWidget* m_line;
};

} // namespace tessary
