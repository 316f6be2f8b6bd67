#include "ui/preview/DetailsColumn.h"

#include "ui/kit/Hairline.h"
#include "ui/kit/OverlayScrollBar.h"
#include "ui/kit/PushButton.h"
#include "ui/kit/Theme.h"
#include "ui/preview/MetadataDraft.h"
#include "ui/preview/NoteEditor.h"
#include "ui/preview/SourceIcon.h"
#include "ui/preview/TagsField.h"

#include <QGridLayout>
#include <QLocale>
#include <QPainter>
#include <QVBoxLayout>

namespace tessary {
namespace {

constexpr int kSidePadding = 20;
constexpr int kTopPadding = 16;
constexpr int kLabelWidth = 72;
constexpr int kRowHeight = 20;
constexpr int kRowGap = 4;

} // namespace

DetailsColumn::DetailsColumn(const Theme& theme, TileImages& tiles, QWidget* parent)
    : QScrollArea(parent),
      m_theme(theme),
      m_content(new QWidget),
      m_icon(new SourceIcon(theme, tiles)),
      m_tags(new TagsField(theme)),
      m_note(new NoteEditor(theme)),
      m_save(new PushButton(theme, PushButton::Role::Default))
{
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
    m_save->setText(tr("保存"));
    m_headings = {new QLabel(tr("来源")), new QLabel(tr("标签与备注"))};
    auto* layout = new QVBoxLayout(m_content);
    layout->setContentsMargins(kSidePadding, kTopPadding, kSidePadding, kTopPadding);
    layout->setSpacing(0);
    layout->addWidget(m_headings.first());
    layout->addSpacing(12);
    layout->addWidget(facts());
    layout->addSpacing(16);
    layout->addWidget(new Hairline(theme, Qt::Horizontal));
    layout->addSpacing(16);
    layout->addWidget(m_headings.last());
    layout->addSpacing(12);
    layout->addWidget(m_tags);
    layout->addSpacing(8);
    layout->addWidget(m_note);
    layout->addSpacing(12 - 3); // the button's ring has room of its own
    layout->addWidget(m_save, 0, Qt::AlignRight);
    layout->addStretch(1);
    setWidget(m_content);
    m_content->setAutoFillBackground(false);
    new OverlayScrollBar(theme, *this);
    connect(m_tags, &TagsField::edited, this, &DetailsColumn::edited);
    connect(m_note, &NoteEditor::edited, this, &DetailsColumn::edited);
    connect(m_save, &QAbstractButton::clicked, this, &DetailsColumn::saveAsked);
    connect(&theme, &Theme::changed, this, &DetailsColumn::applyTheme);
    applyTheme();
}

QLabel* DetailsColumn::addLabel(const QString& text)
{
    m_labels.append(new QLabel(text));
    return m_labels.last();
}

QLabel* DetailsColumn::addValue()
{
    auto* value = new QLabel;
    value->setTextFormat(Qt::PlainText);
    value->setWordWrap(true);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_values.append(value);
    return value;
}

QWidget* DetailsColumn::facts()
{
    auto* facts = new QWidget;
    m_rows = new QGridLayout(facts);
    m_rows->setContentsMargins(0, 0, 0, 0);
    m_rows->setHorizontalSpacing(0);
    m_rows->setVerticalSpacing(kRowGap);
    auto* source = new QHBoxLayout;
    source->setSpacing(12);
    source->addWidget(m_icon);
    source->addWidget(addValue(), 1);
    m_rows->addLayout(source, 0, 0, 1, 2);
    m_rows->setRowMinimumHeight(1, 8);
    const QStringList labels{tr("复制时间"), tr("类型"), tr("尺寸"), tr("文件大小"), tr("重复次数")};
    for (int index = 0; index < labels.size(); ++index) {
        m_rows->addWidget(addLabel(labels.at(index)), index + 2, 0, Qt::AlignTop);
        m_rows->addWidget(addValue(), index + 2, 1, Qt::AlignTop);
        m_values.last()->setAccessibleDescription(labels.at(index));
    }
    m_rows->setColumnStretch(1, 1);
    return facts;
}

void DetailsColumn::applyTheme()
{
    QPalette palette = m_theme.palette();
    setPalette(palette);
    for (QLabel* heading : std::as_const(m_headings))
        heading->setFont(m_theme.font(Theme::kBodySize, QFont::DemiBold));
    for (QLabel* value : std::as_const(m_values)) {
        value->setFont(m_theme.font(Theme::kBodySize));
        value->setPalette(palette);
        value->setMinimumHeight(m_theme.scaled(kRowHeight));
    }
    palette.setColor(QPalette::WindowText, m_theme.colours().secondaryText);
    for (QLabel* label : std::as_const(m_labels)) {
        label->setFont(m_theme.font(Theme::kBodySize));
        label->setPalette(palette);
        label->setMinimumHeight(m_theme.scaled(kRowHeight));
    }
    m_rows->setColumnMinimumWidth(0, m_theme.scaled(kLabelWidth));
    update();
}

void DetailsColumn::setFacts(const ScreenshotRecord& record, bool isCut)
{
    const ItemFacts facts = itemFacts(record, isCut, Calendar::current());
    const QStringList texts{facts.source,     facts.time, facts.kind,
                            facts.dimensions, facts.size, QLocale().toString(record.duplicateCount)};
    for (int index = 0; index < texts.size(); ++index)
        if (m_values.at(index)->text() != texts.at(index)) // else a selection would go
            m_values.at(index)->setText(texts.at(index));
    m_icon->setPath(record.sourceAppIconPath.value_or(QString()));
}

void DetailsColumn::setDraft(const MetadataDraft& draft)
{
    m_tags->setText(draft.tagsText());
    m_note->setText(draft.note());
}

void DetailsColumn::setSaveEnabled(bool isEnabled)
{
    m_save->setEnabled(isEnabled);
}

void DetailsColumn::setReadOnly(bool isReadOnly)
{
    m_tags->setReadOnly(isReadOnly);
    m_note->setReadOnly(isReadOnly);
}

QString DetailsColumn::tagsText() const
{
    return m_tags->text();
}

QString DetailsColumn::note() const
{
    return m_note->text();
}

void DetailsColumn::paintEvent(QPaintEvent*)
{
    QPainter(viewport()).fillRect(viewport()->rect(), m_theme.colours().surface);
}

} // namespace tessary
