#pragma once

#include "store/ScreenshotRecord.h"
#include "ui/preview/MetadataDraft.h"
#include "ui/preview/PreviewToolbar.h"
#include "ui/quicksearch/TileImages.h"

#include <QPointer>
#include <QWidget>

#include <functional>

namespace tessary {

class AppRuntime;
class Banner;
class DetailsColumn;
class EmptyState;
class Hairline;
class ItemExport;
struct LibraryChange;
class NoticeBar;
class PictureCanvas;
struct PreviewSurroundings;
class Sheet;
class TextCanvas;
class ZoomBar;

/// One item at full size, with what is known about it and what can be done to it. Follows the library; what
/// the person is editing stays. Main thread only.
class PreviewDetailView : public QWidget {
    Q_OBJECT
public:
    /// Whether the library still has the item.
    enum class Presence { There, InTrash, Gone };

    /// @param record its text may be cut. Runtime and surroundings outlive the view.
    PreviewDetailView(const ScreenshotRecord& record, AppRuntime& runtime, PreviewSurroundings& surroundings,
                      QWidget* parent = nullptr);

    [[nodiscard]] const ScreenshotRecord& record() const { return m_record; }
    [[nodiscard]] double scale() const { return m_scale; }
    void setScale(double scale);
    [[nodiscard]] const QString& tagsText() const { return m_draft.tagsText(); }
    [[nodiscard]] const QString& note() const { return m_draft.note(); }
    [[nodiscard]] bool isFavorite() const { return m_record.isFavorite; }
    [[nodiscard]] bool isPinned() const { return m_record.isPinned; }
    [[nodiscard]] Presence presence() const { return m_presence; }

    [[nodiscard]] bool hasUnsavedEdits() const { return m_draft.isDirty(); }
    /// Asks what becomes of them, once. @param goOn called when nothing is in the way any more.
    void askAboutEdits(const std::function<void()>& goOn);
    /// Hands them to the runtime, which keeps them even when this view goes away at once.
    void saveAtEnd();

Q_SIGNALS:
    void closeAsked();
    /// The item is called something else now.
    void titleChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void connectParts();
    void followCopyKeys();
    void perform(PreviewToolbar::Action action);
    void copy();
    void reveal();
    void moveToTrash();
    void save(const std::function<void()>& whenSaved);
    void saveAsked() { save({}); }
    /// Runs it; a failure is told in the window and in the runtime's last error.
    void run(QCoro::Task<> task, const std::function<void()>& whenDone);
    void complain(const QString& message);

    void libraryChanged(const LibraryChange& change);
    void refresh();
    void follow(const std::optional<ScreenshotRecord>& record);
    void showRecord();
    void showPresence();
    void edited();
    void showDraft();

    [[nodiscard]] bool isEditing() const;
    [[nodiscard]] bool hasSelection() const;
    [[nodiscard]] bool pressZoomKey(const QKeyEvent& event);
    void layOut();

    AppRuntime& m_runtime;
    PreviewSurroundings& m_surroundings;
    ScreenshotRecord m_record;
    MetadataDraft m_draft;
    bool m_isCut; // whether the record's text is only the beginning of the item's
    double m_scale = 1;
    Presence m_presence = Presence::There;
    bool m_isSaving = false;
    quint64 m_ticket = 0; // of the latest look into the library
    TileImages m_icons;
    PreviewToolbar* m_toolbar;
    Hairline* m_toolbarLine;
    Banner* m_banner;
    NoticeBar* m_notice;
    PictureCanvas* m_picture = nullptr; // one of the two
    TextCanvas* m_text = nullptr;
    ZoomBar* m_zoomBar;
    Hairline* m_columnLine;
    DetailsColumn* m_details;
    ItemExport* m_export;
    QPointer<Sheet> m_sheet;
};

} // namespace tessary
