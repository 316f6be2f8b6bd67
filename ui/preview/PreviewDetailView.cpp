#include "ui/preview/PreviewDetailView.h"

#include "app/AppRuntime.h"
#include "search/ScreenshotSearchViewModel.h"
#include "ui/kit/Banner.h"
#include "ui/kit/Hairline.h"
#include "ui/kit/PushButton.h"
#include "ui/kit/Sheet.h"
#include "ui/kit/Theme.h"
#include "ui/preview/DetailsColumn.h"
#include "ui/preview/ItemExport.h"
#include "ui/preview/NoteEditor.h"
#include "ui/preview/NoticeBar.h"
#include "ui/preview/PictureCanvas.h"
#include "ui/preview/PreviewSurroundings.h"
#include "ui/preview/PreviewZoom.h"
#include "ui/preview/TagsField.h"
#include "ui/preview/TextCanvas.h"
#include "ui/preview/ZoomBar.h"
#include "ui/quicksearch/TextPage.h"

#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace tessary {
namespace {

constexpr double kMostColumnShare = 0.45; // of the window's width

QCoro::Task<QString> complaint(AppRuntime& runtime, QCoro::Task<> task)
{
    QString message;
    try {
        co_await task;
    } catch (const std::exception& error) {
        message = localizedDescription(error);
    }
    if (!message.isEmpty())
        runtime.reportFailure(message);
    co_return message;
}

struct Look {
    bool isKnown = false; ///< Else the library could not be asked.
    std::optional<ScreenshotRecord> record;
};

QCoro::Task<Look> lookUp(AppRuntime& runtime, QUuid id)
{
    Look look;
    try {
        look.record = co_await runtime.item(id);
        look.isKnown = runtime.store() != nullptr;
    } catch (const std::exception& error) {
        runtime.reportFailure(localizedDescription(error));
    }
    co_return look;
}

QCoro::Task<> saveAndTrash(AppRuntime& runtime, ScreenshotRecord record, QStringList tags, QString note)
{
    co_await runtime.saveMetadata(record, tags, note);
    co_await runtime.moveToTrash(record);
}

} // namespace

PreviewDetailView::PreviewDetailView(const ScreenshotRecord& record, AppRuntime& runtime,
                                     PreviewSurroundings& surroundings, QWidget* parent)
    : QWidget(parent),
      m_runtime(runtime),
      m_surroundings(surroundings),
      m_record(record),
      m_draft(record),
      m_isCut(record.textContent.size() >= kListTextLimit),
      m_icons(surroundings.loader),
      m_toolbar(new PreviewToolbar(surroundings.theme, this)),
      m_toolbarLine(new Hairline(surroundings.theme, Qt::Horizontal, this)),
      m_banner(new Banner(surroundings.theme, QStringLiteral("exclamationmark.triangle.fill"), this)),
      m_notice(new NoticeBar(surroundings.theme, this))
{
    const Theme& theme = surroundings.theme;
    if (record.contentType == ClipboardContentType::Text)
        m_text = new TextCanvas(theme, this);
    else
        m_picture =
            new PictureCanvas(theme, surroundings.loader, surroundings.partLoader, surroundings.tiles, this);
    m_zoomBar = new ZoomBar(theme, this);
    m_columnLine = new Hairline(theme, Qt::Vertical, this);
    m_details = new DetailsColumn(theme, m_icons, this);
    m_export = new ItemExport(runtime, surroundings, *this);
    connectParts();
    followCopyKeys();
    showRecord();
    showDraft();
    setFocusProxy(m_text != nullptr ? static_cast<QWidget*>(m_text) : m_picture);
    setFocus();
    refresh();
}

void PreviewDetailView::connectParts()
{
    connect(&m_runtime, &AppRuntime::libraryChanged, this, &PreviewDetailView::libraryChanged);
    connect(m_toolbar, &PreviewToolbar::triggered, this, &PreviewDetailView::perform);
    connect(m_zoomBar, &ZoomBar::zoomIn, this, [this] { setScale(PreviewZoom::larger(m_scale)); });
    connect(m_zoomBar, &ZoomBar::zoomOut, this, [this] { setScale(PreviewZoom::smaller(m_scale)); });
    connect(m_zoomBar, &ZoomBar::reset, this, [this] { setScale(PreviewZoom::kReset); });
    const auto followScale = [this](double scale) { setScale(scale); };
    if (m_picture != nullptr)
        connect(m_picture, &PictureCanvas::scaleChanged, this, followScale);
    else
        connect(m_text, &TextCanvas::scaleChanged, this, followScale);
    connect(m_details, &DetailsColumn::edited, this, &PreviewDetailView::edited);
    connect(m_details, &DetailsColumn::saveAsked, this, &PreviewDetailView::saveAsked);
    connect(m_export, &ItemExport::failed, m_banner, &Banner::setMessage);
    connect(m_export, &ItemExport::done, this, [this] { m_banner->setMessage({}); });
    connect(m_banner, &Banner::closed, this, [this] { m_banner->setMessage({}); });
    for (QWidget* each : {static_cast<QWidget*>(m_banner), static_cast<QWidget*>(m_notice)})
        each->installEventFilter(this);
    connect(&m_surroundings.theme, &Theme::changed, this, [this] {
        layOut();
        update();
    });
}

/// What has a selection copies that itself; where there is none, the keys mean the item.
void PreviewDetailView::followCopyKeys()
{
    for (QLabel* value : m_details->values())
        value->installEventFilter(this);
    if (m_text != nullptr)
        m_text->page().view().installEventFilter(this);
}

// --- zoom -------------------------------------------------------------------

void PreviewDetailView::setScale(double scale)
{
    m_scale = scale;
    m_zoomBar->setScale(scale);
    if (m_picture != nullptr)
        m_picture->setScale(scale);
    else
        m_text->setScale(scale);
}

bool PreviewDetailView::pressZoomKey(const QKeyEvent& event)
{
    if (!event.modifiers().testFlag(Qt::ControlModifier) || event.modifiers().testFlag(Qt::AltModifier))
        return false;
    switch (event.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        setScale(PreviewZoom::larger(m_scale));
        return true;
    case Qt::Key_Minus:
    case Qt::Key_Underscore:
        setScale(PreviewZoom::smaller(m_scale));
        return true;
    case Qt::Key_0:
        setScale(PreviewZoom::kReset);
        return true;
    default:
        return false;
    }
}

// --- keys -------------------------------------------------------------------

bool PreviewDetailView::isEditing() const
{
    const QWidget* focused = m_details->window()->focusWidget();
    return focused != nullptr &&
           (m_details->tagsField().isAncestorOf(focused) || m_details->noteEditor().isAncestorOf(focused));
}

bool PreviewDetailView::hasSelection() const
{
    const QList<QLabel*>& values = m_details->values();
    const bool isInValues = std::any_of(values.begin(), values.end(), [](const QLabel* value) {
        return value->hasFocus() && value->hasSelectedText();
    });
    return isInValues || (m_text != nullptr && m_text->page().view().textCursor().hasSelection());
}

bool PreviewDetailView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy) &&
        !hasSelection()) {
        copy();
        return true;
    }
    const bool isBar = watched == m_banner || watched == m_notice;
    const bool isResized =
        event->type() == QEvent::Resize || event->type() == QEvent::Show || event->type() == QEvent::Hide;
    if (isBar && isResized)
        layOut();
    return QWidget::eventFilter(watched, event);
}

void PreviewDetailView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape || event->matches(QKeySequence::Close))
        return Q_EMIT closeAsked();
    if (pressZoomKey(*event))
        return;
    if (event->matches(QKeySequence::Save))
        return save({});
    if (event->matches(QKeySequence::Copy))
        return hasSelection() && m_text != nullptr ? m_text->page().view().copy() : copy();
    if (event->key() == Qt::Key_Delete && event->modifiers() == Qt::NoModifier && !isEditing())
        return moveToTrash();
    QWidget::keyPressEvent(event);
}

// --- actions ----------------------------------------------------------------

void PreviewDetailView::perform(PreviewToolbar::Action action)
{
    using Action = PreviewToolbar::Action;
    ScreenshotRecord& record = m_record;
    switch (action) {
    case Action::Copy:
        return copy();
    case Action::Reveal:
        return reveal();
    case Action::Favorite:
        run(m_runtime.toggleFavorite(record), [this] { refresh(); });
        record.isFavorite = !record.isFavorite; // a second click before the library answers means the other
        return showRecord();
    case Action::Pin:
        run(m_runtime.togglePinned(record), [this] { refresh(); });
        record.isPinned = !record.isPinned;
        return showRecord();
    case Action::Export:
        return m_export->begin(record);
    case Action::Delete:
        return moveToTrash();
    }
}

void PreviewDetailView::run(QCoro::Task<> task, const std::function<void()>& whenDone)
{
    QCoro::connect(complaint(m_runtime, std::move(task)), this, [this, whenDone](const QString& message) {
        if (!message.isEmpty()) {
            m_banner->setMessage(message);
            return refresh(); // what was expected did not come about
        }
        if (whenDone)
            whenDone();
    });
}

void PreviewDetailView::complain(const QString& message)
{
    m_runtime.reportFailure(message);
    m_banner->setMessage(message);
}

void PreviewDetailView::copy()
{
    if (m_presence == Presence::Gone)
        return;
    QCoro::connect(m_runtime.copyOrExplain(m_record, false), this,
                   [this](const std::optional<QString>& message) {
                       if (message)
                           complain(*message);
                   });
}

void PreviewDetailView::reveal()
{
    m_runtime.revealInFinder(m_record);
    const bool isText = m_record.contentType == ClipboardContentType::Text;
    if (isText && m_runtime.lastError()) // there is no file, and the window was asked for it
        m_banner->setMessage(*m_runtime.lastError());
}

void PreviewDetailView::moveToTrash()
{
    if (m_presence != Presence::There)
        return;
    const auto close = [this] {
        m_draft.saved(m_draft.tags(), m_draft.note());
        Q_EMIT closeAsked();
    };
    if (m_draft.isDirty())
        run(saveAndTrash(m_runtime, m_record, m_draft.tags(), m_draft.note()), close);
    else
        run(m_runtime.moveToTrash(m_record), close);
}

// --- tags and note ----------------------------------------------------------

void PreviewDetailView::edited()
{
    m_draft.setTagsText(m_details->tagsText());
    m_draft.setNote(m_details->note());
    m_details->setSaveEnabled(m_draft.isDirty() && m_presence != Presence::Gone);
}

void PreviewDetailView::showDraft()
{
    m_details->setDraft(m_draft);
    m_details->setSaveEnabled(m_draft.isDirty() && m_presence != Presence::Gone);
}

void PreviewDetailView::save(const std::function<void()>& whenSaved)
{
    if (!m_draft.isDirty() || m_presence == Presence::Gone || m_isSaving)
        return;
    m_isSaving = true;
    const QStringList tags = m_draft.tags();
    const QString note = m_draft.note();
    QCoro::connect(complaint(m_runtime, m_runtime.saveMetadata(m_record, tags, note)), this,
                   [this, tags, note, whenSaved](const QString& message) {
                       m_isSaving = false;
                       m_banner->setMessage(message);
                       if (!message.isEmpty())
                           return;
                       m_draft.saved(tags, note);
                       showDraft();
                       if (whenSaved)
                           whenSaved();
                   });
}

void PreviewDetailView::saveAtEnd()
{
    if (m_draft.isDirty() && m_presence != Presence::Gone)
        m_runtime.perform(m_runtime.saveMetadata(m_record, m_draft.tags(), m_draft.note()));
}

void PreviewDetailView::askAboutEdits(const std::function<void()>& goOn)
{
    if (m_sheet)
        return;
    const auto discard = [this, goOn] {
        m_draft = MetadataDraft(m_record);
        goOn();
    };
    Sheet::Question question;
    question.symbol = QStringLiteral("exclamationmark.triangle.fill");
    if (m_presence == Presence::Gone) {
        question.title = tr("此项目已不在剪贴板记录中");
        question.text = tr("未保存的标签和备注无处可存，关闭后将丢失。");
        question.choices = {{tr("关闭"), PushButton::Role::Destructive, discard},
                            {tr("取消"), PushButton::Role::Default, {}}};
    } else {
        question.title = tr("要保存标签和备注吗？");
        question.text = tr("如果不保存，所做的更改将丢失。");
        question.choices = {{tr("不保存"), PushButton::Role::Destructive, discard},
                            {tr("取消"), PushButton::Role::Ordinary, {}},
                            {tr("保存"), PushButton::Role::Default, [this, goOn] { save(goOn); }}};
    }
    question.escape = 1;
    QWidget* const focused = window()->focusWidget();
    m_sheet = Sheet::ask(m_surroundings.theme, *this, question);
    connect(m_sheet.data(), &Sheet::closed, this, [before = QPointer<QWidget>(focused)] {
        if (before)
            before->setFocus();
    });
}

// --- following the library --------------------------------------------------

void PreviewDetailView::libraryChanged(const LibraryChange& change)
{
    if (change.kind == LibraryChange::Kind::Added)
        return;
    if (change.items.isEmpty() || change.items.contains(m_record.id))
        refresh();
}

void PreviewDetailView::refresh()
{
    const quint64 ticket = ++m_ticket;
    QCoro::connect(lookUp(m_runtime, m_record.id), this, [this, ticket](const Look& look) {
        if (ticket == m_ticket && look.isKnown)
            follow(look.record);
    });
}

void PreviewDetailView::follow(const std::optional<ScreenshotRecord>& record)
{
    m_presence = !record ? Presence::Gone : record->isDeleted ? Presence::InTrash : Presence::There;
    if (record) {
        m_record = *record;
        m_isCut = false;
        m_draft.follow(*record);
        showRecord();
    }
    showPresence();
    showDraft();
}

void PreviewDetailView::showRecord()
{
    m_toolbar->setFavorite(m_record.isFavorite);
    m_toolbar->setPinned(m_record.isPinned);
    m_details->setFacts(m_record, m_isCut);
    if (m_text != nullptr)
        m_text->setText(m_record.textContent, m_isCut);
    else
        m_picture->setPicture(
            m_record.libraryPath, m_record.thumbnailPath.value_or(QString()),
            QSize(static_cast<int>(m_record.pixelWidth), static_cast<int>(m_record.pixelHeight)));
    Q_EMIT titleChanged();
}

void PreviewDetailView::showPresence()
{
    using Action = PreviewToolbar::Action;
    const bool isThere = m_presence == Presence::There;
    const bool isGone = m_presence == Presence::Gone;
    for (const Action action : {Action::Favorite, Action::Pin, Action::Delete})
        m_toolbar->setActionEnabled(action, isThere);
    for (const Action action : {Action::Copy, Action::Reveal, Action::Export})
        m_toolbar->setActionEnabled(action, !isGone);
    m_details->setReadOnly(isGone);
    if (isGone)
        m_notice->setText(tr("此项目已从剪贴板记录中删除"));
    else
        m_notice->setText(isThere ? QString() : tr("此项目已在回收站中"));
}

// --- looks ------------------------------------------------------------------

void PreviewDetailView::resizeEvent(QResizeEvent*)
{
    layOut();
}

void PreviewDetailView::layOut()
{
    int top = m_toolbar->sizeHint().height();
    m_toolbar->setGeometry(0, 0, width(), top);
    m_toolbarLine->setGeometry(0, top++, width(), 1);
    for (QWidget* bar : {static_cast<QWidget*>(m_notice), static_cast<QWidget*>(m_banner)}) {
        const int height = bar == m_banner ? m_banner->height() : m_notice->sizeHint().height();
        bar->setGeometry(0, top, width(), height);
        top += bar->isHidden() ? 0 : height;
    }
    const int below = std::max(0, height() - top);
    const int column = std::min(m_surroundings.theme.scaled(DetailsColumn::kWidth),
                                static_cast<int>(width() * kMostColumnShare));
    const QRect canvas(0, top, std::max(0, width() - column - 1), below);
    QWidget* const shown = m_text != nullptr ? static_cast<QWidget*>(m_text) : m_picture;
    shown->setGeometry(canvas);
    m_zoomBar->place(canvas);
    m_columnLine->setGeometry(canvas.width(), top, 1, below);
    m_details->setGeometry(canvas.width() + 1, top, column, below);
}

void PreviewDetailView::paintEvent(QPaintEvent* event)
{
    QPainter(this).fillRect(event->rect(), m_surroundings.theme.colours().window);
}

} // namespace tessary
