#include "recognition/LocalOCRResultView.h"

#include "base/Error.h"
#include "recognition/OCRReminderClassifier.h"
#include "recognition/OCRStatusRow.h"
#include "recognition/RecognizedTextEdit.h"
#include "recognition/RegionPicture.h"
#include "recognition/SuccessBubble.h"
#include "ui/kit/FocusRing.h"
#include "ui/kit/PushButton.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/SymbolButton.h"
#include "ui/kit/Theme.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace tessary {
namespace {

constexpr int kMargin = 20;
constexpr int kTitleHeight = 48;
constexpr int kTitleLine = 20;
constexpr int kHeadingGap = 4;
constexpr int kHeadingHeight = 28;
constexpr int kHeadingLine = 16; // as much as the button beside it grows by
constexpr int kGap = 8;
constexpr int kColumnGap = 16;
constexpr int kFooterHeight = 48;
constexpr int kFooterLine = 16;
constexpr int kButtonsRight = 12;
constexpr int kButtonGap = 4;
constexpr int kButtonRing = 3; // around the face of a push button
constexpr int kSymbolSize = 20;

/// What went wrong, as the person is to read it; nothing when the reminder was made.
QCoro::Task<std::optional<QString>> attempt(RecognitionResult::CreateReminder create, OCRReminderDraft draft)
{
    std::optional<QString> failure;
    try {
        const QCoro::Task<> creating = create(draft);
        co_await creating;
    } catch (const Error& error) {
        failure = error.localizedDescription();
    } catch (const std::exception& error) {
        failure = QString::fromLocal8Bit(error.what());
    }
    co_return failure;
}

/// A symbol that follows the theme.
class SuccessMark : public QWidget {
public:
    SuccessMark(const Theme& theme, QWidget* parent) : QWidget(parent), m_theme(theme)
    {
        setFixedSize(kSymbolSize, kSymbolSize);
        connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter(this).drawPixmap(0, 0,
                                  Symbol(QStringLiteral("checkmark.circle.fill"))
                                      .pixmap(kSymbolSize, m_theme.colours().success, devicePixelRatioF()));
    }

private:
    const Theme& m_theme;
};

/// The card behind the text.
class TextCard : public QWidget {
public:
    TextCard(const Theme& theme, QWidget& text, QWidget* parent)
        : QWidget(parent),
          m_theme(theme),
          m_focusRing(text, *this)
    {
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(m_theme.colours().edge);
        painter.setBrush(m_theme.colours().surface);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Theme::kCardRadius,
                                Theme::kCardRadius);
        m_focusRing.paint(painter, m_theme, rect(), Theme::kCardRadius);
    }

private:
    const Theme& m_theme;
    FocusRing m_focusRing;
};

} // namespace

QLabel* LocalOCRResultView::label(const QString& text, int size, QFont::Weight weight)
{
    auto* made = new QLabel(text, this);
    made->setTextFormat(Qt::PlainText);
    m_labels.append({made, size, weight});
    return made;
}

LocalOCRResultView::LocalOCRResultView(const Theme& theme, RecognitionResult result, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_createReminder(std::move(result.createReminder)),
      m_copyText(std::move(result.copyText)),
      m_now(std::move(result.now)),
      m_status(std::move(result.status)),
      m_text(new RecognizedTextEdit(theme, result.text, this)),
      m_statusRow(new OCRStatusRow(theme, this)),
      m_addButton(new PushButton(theme, PushButton::Role::Default, this)),
      m_bubble(new SuccessBubble(theme, this))
{
    m_text->setObjectName(QStringLiteral("recognizedText"));
    m_addButton->setObjectName(QStringLiteral("addReminder"));
    build(result.image);
    connect(m_text, &RecognizedTextEdit::edited, this,
            [this] { m_statusRow->setCharacterCount(RecognizedTextEdit::characterCount(text())); });
    connect(m_addButton, &QAbstractButton::clicked, this, &LocalOCRResultView::addReminder);
    connect(&theme, &Theme::changed, this, &LocalOCRResultView::applyTheme);
    applyTheme();
    m_statusRow->setCharacterCount(RecognizedTextEdit::characterCount(text()));
    setCreatingReminder(false);
    setReminderStatus(m_status);
}

void LocalOCRResultView::build(const QImage& image)
{
    auto* columns = new QHBoxLayout;
    columns->setContentsMargins(kMargin, kHeadingGap - kButtonRing, kMargin, 0);
    columns->setSpacing(kColumnGap - kButtonRing);
    columns->addWidget(textColumn(), 3);
    columns->addWidget(pictureColumn(image), 2);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(titleBar());
    layout->addLayout(columns, 1);
    layout->addLayout(footer());
    // As one reads: the text, what can be done with it, the window.
    auto* copy = findChild<PushButton*>(QStringLiteral("copyAgain"));
    auto* minimize = findChild<SymbolButton*>(QStringLiteral("minimize"));
    auto* close = findChild<SymbolButton*>(QStringLiteral("close"));
    setTabOrder(m_text, copy);
    setTabOrder(copy, m_addButton);
    setTabOrder(m_addButton, minimize);
    setTabOrder(minimize, close);
}

QWidget* LocalOCRResultView::titleBar()
{
    auto* bar = new QWidget(this);
    m_lines.append({bar, kTitleHeight, kTitleLine});
    auto* title = label(tr("OCR 识别结果"), Theme::kTitleSize, QFont::DemiBold);
    title->setAlignment(Qt::AlignCenter);
    auto* minimize = new SymbolButton(m_theme, QStringLiteral("minus"), bar);
    minimize->setObjectName(QStringLiteral("minimize"));
    minimize->setAccessibleName(tr("最小化"));
    minimize->setToolTip(tr("最小化"));
    auto* close = new SymbolButton(m_theme, QStringLiteral("xmark"), bar);
    close->setObjectName(QStringLiteral("close"));
    close->setAccessibleName(tr("关闭"));
    close->setToolTip(tr("关闭"));
    connect(minimize, &QAbstractButton::clicked, this, &LocalOCRResultView::minimizeRequested);
    connect(close, &QAbstractButton::clicked, this, &LocalOCRResultView::closeRequested);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(kButtonGap);
    buttons->addStretch(1);
    buttons->addWidget(minimize);
    buttons->addWidget(close);
    auto* row = new QHBoxLayout(bar); // as much at the left as at the right: the title is in the middle
    row->setContentsMargins(kButtonsRight, 0, kButtonsRight, 0);
    row->addStretch(1);
    row->addWidget(title);
    row->addLayout(buttons, 1);
    return bar;
}

QWidget* LocalOCRResultView::textColumn()
{
    auto* column = new QWidget(this);
    auto* copy = new PushButton(m_theme, PushButton::Role::Ordinary, column);
    copy->setObjectName(QStringLiteral("copyAgain"));
    copy->setSymbol(QStringLiteral("doc.on.doc"));
    copy->setText(tr("再次复制"));
    connect(copy, &QAbstractButton::clicked, this, &LocalOCRResultView::copyAgain);
    auto* heading = new QHBoxLayout;
    heading->setSpacing(kGap);
    heading->addWidget(new SuccessMark(m_theme, column));
    heading->addWidget(label(tr("已识别并复制到剪贴板"), Theme::kBodySize), 1);
    heading->addWidget(copy);
    auto* card = new TextCard(m_theme, *m_text, column);
    connect(&m_theme, &Theme::changed, card, qOverload<>(&QWidget::update));
    auto* inside = new QVBoxLayout(card);
    inside->setContentsMargins(1, 1, 1, 1);
    inside->addWidget(m_text);
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kGap - kButtonRing);
    layout->addLayout(heading);
    auto* cardRow = new QHBoxLayout;
    cardRow->setContentsMargins(0, 0, kButtonRing, 0);
    cardRow->addWidget(card);
    layout->addLayout(cardRow, 1);
    return column;
}

QWidget* LocalOCRResultView::pictureColumn(const QImage& image)
{
    auto* column = new QWidget(this);
    auto* heading = label(tr("识别区域"), Theme::kBodySize, QFont::DemiBold);
    m_lines.append({heading, kHeadingHeight, kHeadingLine});
    auto* picture = new RegionPicture(m_theme, image, column);
    picture->setObjectName(QStringLiteral("region"));
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, kButtonRing, 0, 0);
    layout->setSpacing(kGap);
    layout->addWidget(heading);
    layout->addWidget(picture, 1);
    return column;
}

QBoxLayout* LocalOCRResultView::footer()
{
    m_statusRow->setObjectName(QStringLiteral("status"));
    auto* row = new QHBoxLayout;
    row->setContentsMargins(kMargin, 0, kMargin - kButtonRing, 0);
    row->setSpacing(0);
    row->addWidget(m_statusRow, 1);
    row->addSpacing(kColumnGap);
    row->addWidget(m_addButton);
    auto* strut = new QWidget(this);
    strut->setFixedWidth(0);
    m_lines.append({strut, kFooterHeight, kFooterLine});
    row->addWidget(strut);
    return row;
}

void LocalOCRResultView::applyTheme()
{
    setPalette(m_theme.palette());
    for (const Label& each : m_labels)
        each.label->setFont(m_theme.font(each.size, each.weight));
    for (const Line& each : m_lines)
        each.widget->setFixedHeight(m_theme.fitting(each.height, each.text));
    update();
}

const QString& LocalOCRResultView::text() const
{
    return m_text->text();
}

bool LocalOCRResultView::isSuccessBubbleVisible() const
{
    return m_bubble->isPresent();
}

void LocalOCRResultView::copyAgain()
{
    m_copyText(text());
}

void LocalOCRResultView::addReminder()
{
    if (m_isCreatingReminder || !m_status.offersReminder())
        return;
    const std::optional<OCRReminderDraft> draft = OCRReminderClassifier::draft(text(), m_now());
    if (!draft)
        return;
    setCreatingReminder(true);
    QCoro::connect(attempt(m_createReminder, *draft), this,
                   [this](const std::optional<QString>& failure) { created(failure); });
}

void LocalOCRResultView::created(const std::optional<QString>& failure)
{
    setCreatingReminder(false);
    if (failure) {
        setReminderStatus({OCRReminderStatus::Failed{*failure}});
        return;
    }
    setReminderStatus({OCRReminderStatus::Created{}});
    m_bubble->appear();
}

void LocalOCRResultView::appeared()
{
    m_text->setFocus();
    if (std::holds_alternative<OCRReminderStatus::Created>(m_status.value))
        m_bubble->appear();
}

void LocalOCRResultView::setReminderStatus(OCRReminderStatus status)
{
    m_status = std::move(status);
    m_statusRow->setStatus(m_status);
    if (!m_status.offersReminder() && m_addButton->hasFocus())
        m_text->setFocus();
    m_addButton->setVisible(m_status.offersReminder());
}

void LocalOCRResultView::setCreatingReminder(bool isCreating)
{
    m_isCreatingReminder = isCreating;
    m_addButton->setText(isCreating ? tr("正在添加...") : tr("添加待办"));
    m_addButton->setEnabled(!isCreating);
    m_addButton->updateGeometry();
}

void LocalOCRResultView::resizeEvent(QResizeEvent*)
{
    m_bubble->place(width());
}

} // namespace tessary
