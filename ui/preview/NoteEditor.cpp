#include "ui/preview/NoteEditor.h"

#include "ui/kit/FieldFrame.h"
#include "ui/kit/OverlayScrollBar.h"
#include "ui/kit/Theme.h"

#include <QEvent>
#include <QPainter>
#include <QSignalBlocker>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kTop = 6;

} // namespace

NoteEditor::NoteEditor(const Theme& theme, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_edit(new QPlainTextEdit(this))
{
    m_edit->setFrameShape(QFrame::NoFrame);
    m_edit->setTabChangesFocus(true);
    m_edit->setContextMenuPolicy(Qt::NoContextMenu);
    m_edit->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_edit->document()->setDocumentMargin(0);
    m_edit->setAccessibleName(tr("备注"));
    m_edit->installEventFilter(this);
    new OverlayScrollBar(theme, *m_edit);
    setFocusProxy(m_edit);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    connect(m_edit, &QPlainTextEdit::textChanged, this, &NoteEditor::edited);
    connect(&theme, &Theme::changed, this, &NoteEditor::applyTheme);
    applyTheme();
}

void NoteEditor::applyTheme()
{
    QPalette palette = m_theme.palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    m_edit->setPalette(palette);
    m_edit->setFont(m_theme.font(Theme::kBodySize));
    updateGeometry();
    update();
}

void NoteEditor::setText(const QString& text)
{
    if (text == this->text())
        return;
    const int position = m_edit->textCursor().position();
    const QSignalBlocker quiet(this);
    m_edit->setPlainText(text);
    QTextCursor cursor = m_edit->textCursor();
    cursor.setPosition(std::min(position, m_edit->document()->characterCount() - 1));
    m_edit->setTextCursor(cursor);
}

QSize NoteEditor::sizeHint() const
{
    return {0, m_theme.scaled(kHeight)};
}

QSize NoteEditor::minimumSizeHint() const
{
    return {0, m_theme.scaled(kLeastHeight)};
}

bool NoteEditor::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    return QWidget::eventFilter(watched, event);
}

void NoteEditor::resizeEvent(QResizeEvent*)
{
    m_edit->setGeometry(rect().adjusted(FieldFrame::kPadding, kTop, -2, -kTop));
}

void NoteEditor::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    FieldFrame::paint(painter, m_theme, rect(), m_edit->hasFocus());
}

} // namespace tessary
