#include "ui/quicksearch/TextPage.h"

#include "ui/kit/CardFocus.h"
#include "ui/kit/OverlayScrollBar.h"
#include "ui/kit/Theme.h"

#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QTimerEvent>

namespace tessary {
namespace {

constexpr int kMargin = 12;
constexpr int kSidePadding = 20;
constexpr int kTopPadding = 16;
constexpr int kLineHeight = 22;
constexpr qsizetype kFirstPiece = 2'000; // more than the page shows at once; UTF-16 units
constexpr qsizetype kPiece = 2'000;

/// Where a piece that starts there ends: not inside a surrogate pair.
qsizetype pieceEnd(const QString& text, qsizetype start, qsizetype length)
{
    const qsizetype end = std::min(start + length, text.size());
    return end < text.size() && text.at(end).isLowSurrogate() ? end + 1 : end;
}

} // namespace

TextView::TextView(int rightPadding, QWidget* parent) : QTextEdit(parent)
{
    setReadOnly(true);
    setFrameShape(NoFrame);
    setUndoRedoEnabled(false);
    setAcceptRichText(false);
    setFocusPolicy(Qt::TabFocus);
    setContextMenuPolicy(Qt::NoContextMenu);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setViewportMargins(0, 0, rightPadding, 0);
    document()->setDocumentMargin(0);
}

TextPage::TextPage(const Theme& theme, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_view(new TextView(kSidePadding, this)),
      m_focus(new CardFocus(*m_view, *this))
{
    m_view->setAccessibleName(tr("预览"));
    new OverlayScrollBar(theme, *m_view);
    connect(&theme, &Theme::changed, this, &TextPage::applyTheme);
    applyTheme();
}

void TextPage::applyTheme()
{
    QPalette palette = m_theme.palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    m_view->setPalette(palette);
    m_view->setFont(m_theme.font(Theme::kBodySize));
    if (m_shown > 0)
        refill(); // line heights and the note's colour are in the document
    update();
}

void TextPage::setText(const QString& text, const QString& note)
{
    if (m_text == text && m_note == note && m_shown > 0)
        return;
    m_text = text;
    m_note = note;
    refill();
}

void TextPage::refill()
{
    m_nextPiece.stop();
    m_shown = 0;
    m_view->clear();
    QTextBlockFormat format;
    format.setLineHeight(m_theme.scaled(kLineHeight), QTextBlockFormat::FixedHeight);
    QTextCursor(m_view->document()).setBlockFormat(format);
    appendPiece();
    m_view->verticalScrollBar()->setValue(0);
}

void TextPage::appendPiece()
{
    const qsizetype end = pieceEnd(m_text, m_shown, m_shown == 0 ? kFirstPiece : kPiece);
    QTextCursor cursor(m_view->document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(m_text.sliced(m_shown, end - m_shown));
    m_shown = end;
    if (m_shown < m_text.size())
        return m_nextPiece.start(0, this);
    m_nextPiece.stop();
    appendNote();
}

void TextPage::appendNote()
{
    if (m_note.isEmpty())
        return;
    QTextCursor cursor(m_view->document());
    cursor.movePosition(QTextCursor::End);
    QTextCharFormat quiet;
    quiet.setForeground(m_theme.colours().secondaryText);
    cursor.insertText(QStringLiteral("\n\n") + m_note, quiet);
}

void TextPage::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_nextPiece.timerId())
        appendPiece();
}

void TextPage::resizeEvent(QResizeEvent*)
{
    // The scroll bar lies in the padding at the right.
    m_view->setGeometry(
        rect().adjusted(kMargin + kSidePadding, kMargin + kTopPadding, -kMargin, -kMargin - 1));
}

void TextPage::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(m_theme.colours().hairline);
    painter.setBrush(m_theme.colours().surface);
    const QRectF card = QRectF(rect()).adjusted(kMargin, kMargin, -kMargin, -kMargin);
    painter.drawRoundedRect(card.adjusted(0.5, 0.5, -0.5, -0.5), Theme::kCardRadius, Theme::kCardRadius);
    m_focus->paint(painter, m_theme, card, Theme::kCardRadius);
}

} // namespace tessary
