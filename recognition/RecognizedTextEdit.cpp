#include "recognition/RecognizedTextEdit.h"

#include "ui/kit/OverlayScrollBar.h"
#include "ui/kit/Theme.h"

#include <QMimeData>
#include <QTextBlock>
#include <QTextBoundaryFinder>

namespace tessary {
namespace {

constexpr int kSidePadding = 16;
constexpr int kTopPadding = 12;
constexpr int kLineHeight = 22;
constexpr int kLeading = 3; // of a line above its letters

} // namespace

RecognizedTextEdit::RecognizedTextEdit(const Theme& theme, const QString& text, QWidget* parent)
    : QTextEdit(parent),
      m_theme(theme),
      m_text(text)
{
    setAccessibleName(tr("识别的文字"));
    setFrameShape(NoFrame);
    setAcceptRichText(false);
    setTabChangesFocus(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setViewportMargins(kSidePadding, kTopPadding - kLeading, kSidePadding, kTopPadding - kLeading);
    document()->setDocumentMargin(0);
    new OverlayScrollBar(theme, *this);
    connect(&theme, &Theme::changed, this, &RecognizedTextEdit::applyTheme);
    begin();
    applyTheme();
    connect(this, &QTextEdit::textChanged, this, &RecognizedTextEdit::readBack);
}

/// The text with its line height is what undoing goes back to.
void RecognizedTextEdit::begin()
{
    setPlainText(m_text);
    setLineHeight(m_theme.scaled(kLineHeight));
    document()->setModified(false);
}

/// Forgets what could be undone: undoing would bring the old line height back.
void RecognizedTextEdit::setLineHeight(int height)
{
    m_lineHeight = height;
    QTextCursor all(document());
    all.select(QTextCursor::Document);
    QTextBlockFormat format;
    format.setLineHeight(height, QTextBlockFormat::FixedHeight);
    all.mergeBlockFormat(format);
    document()->clearUndoRedoStacks();
}

/// Not `toPlainText`, which makes blanks of blanks that do not break.
void RecognizedTextEdit::readBack()
{
    QString now = document()->toRawText();
    now.replace(QChar::ParagraphSeparator, u'\n');
    now.replace(QChar::LineSeparator, u'\n');
    if (now == m_text)
        return;
    m_text = now;
    Q_EMIT edited();
}

qsizetype RecognizedTextEdit::characterCount(const QString& text)
{
    QTextBoundaryFinder clusters(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (clusters.toNextBoundary() > 0)
        ++count;
    return count;
}

void RecognizedTextEdit::applyTheme()
{
    QPalette palette = m_theme.palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    setPalette(palette);
    setFont(m_theme.font(Theme::kBodySize));
    viewport()->setAutoFillBackground(false);
    if (m_lineHeight != m_theme.scaled(kLineHeight))
        setLineHeight(m_theme.scaled(kLineHeight));
    update();
}

void RecognizedTextEdit::insertFromMimeData(const QMimeData* source)
{
    if (source->hasText())
        insertPlainText(source->text());
}

} // namespace tessary
