#include "ui/quicksearch/TextPage.h"

#include "ui/kit/OverlayScrollBar.h"
#include "ui/kit/Theme.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QTimerEvent>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kTabColumns = 4;
constexpr qsizetype kFirstPiece = 2'000; // more than the page shows at once; UTF-16 units
constexpr qsizetype kPiece = 2'000;

/// Where a piece that starts there ends: not inside a surrogate pair.
qsizetype pieceEnd(const QString& text, qsizetype start, qsizetype length)
{
    const qsizetype end = std::min(start + length, text.size());
    return end < text.size() && text.at(end).isLowSurrogate() ? end + 1 : end;
}

} // namespace

TextView::TextView(QWidget* parent) : QTextEdit(parent)
{
    setReadOnly(true);
    setFrameShape(NoFrame);
    setUndoRedoEnabled(false);
    setAcceptRichText(false);
    setFocusPolicy(Qt::TabFocus);
    setContextMenuPolicy(Qt::NoContextMenu);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document()->setDocumentMargin(0);
}

void TextView::setRightPadding(int pixels)
{
    setViewportMargins(0, 0, pixels, 0);
}

TextPage::TextPage(const Theme& theme, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_view(new TextView(this)),
      m_focusRing(*m_view, *this)
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
    m_view->setFont(textFont());
    m_view->setTabStopDistance(kTabColumns * QFontMetricsF(textFont()).horizontalAdvance(QLatin1Char('n')));
    if (m_shown > 0)
        refill(); // line heights and the note's colour are in the document
    layOut();
    update();
}

void TextPage::setLook(const Look& look)
{
    const double share = m_view->verticalScrollBar()->maximum() > 0
                             ? m_view->verticalScrollBar()->value() /
                                   static_cast<double>(m_view->verticalScrollBar()->maximum())
                             : 0;
    m_look = look;
    applyTheme();
    m_view->verticalScrollBar()->setValue(qRound(share * m_view->verticalScrollBar()->maximum()));
}

int TextPage::zoomed(int pixels) const
{
    return qRound(pixels * m_theme.textScale() * m_look.zoom);
}

QFont TextPage::textFont() const
{
    QFont font = m_theme.font(m_look.textSize);
    if (m_look.isCode) {
        const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
        const QStringList desktops = QFontInfo(fixed).fixedPitch() ? fixed.families() : QStringList();
        font.setFamilies(desktops + QStringList{QStringLiteral("monospace")} + font.families());
        font.setFixedPitch(true);
    }
    font.setPixelSize(std::max(1, zoomed(m_look.textSize)));
    return font;
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
    format.setLineHeight(zoomed(m_look.lineHeight), QTextBlockFormat::FixedHeight);
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
    layOut();
}

QRect TextPage::card() const
{
    QRect card = rect().adjusted(m_look.margin, m_look.margin, -m_look.margin, -m_look.margin);
    const int most = zoomed(m_look.mostWidth) + 2 * m_look.sidePadding;
    if (m_look.mostWidth == 0 || card.width() <= most)
        return card;
    card.setLeft(card.left() + (card.width() - most) / 2);
    card.setWidth(most);
    return card;
}

/// The scroll bar lies in the padding at the right.
void TextPage::layOut()
{
    m_view->setRightPadding(m_look.sidePadding);
    m_view->setGeometry(card().adjusted(m_look.sidePadding, m_look.topPadding, 0, -1));
}

void TextPage::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(m_theme.colours().hairline);
    painter.setBrush(m_theme.colours().surface);
    const QRectF place = card();
    painter.drawRoundedRect(place.adjusted(0.5, 0.5, -0.5, -0.5), Theme::kCardRadius, Theme::kCardRadius);
    m_focusRing.paint(painter, m_theme, place, Theme::kCardRadius);
}

} // namespace tessary
