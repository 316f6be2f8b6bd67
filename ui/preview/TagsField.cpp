#include "ui/preview/TagsField.h"

#include "ui/kit/FieldFrame.h"
#include "ui/kit/Theme.h"
#include "ui/preview/TagChip.h"
#include "ui/preview/TagsText.h"

#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kPadding = 6;
constexpr int kGap = 4;
constexpr int kSmallestEdit = 32;
constexpr int kOwnMargin = 2; // what QLineEdit adds by itself

} // namespace

TagsField::TagsField(const Theme& theme, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_edit(new QLineEdit(this))
{
    m_edit->setFrame(false);
    m_edit->setContextMenuPolicy(Qt::NoContextMenu);
    m_edit->setAccessibleName(tr("标签"));
    m_edit->setAccessibleDescription(tr("标签，用逗号分隔"));
    m_edit->installEventFilter(this);
    setFocusProxy(m_edit);
    setCursor(Qt::IBeamCursor);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(m_edit, &QLineEdit::textEdited, this, &TagsField::typed);
    connect(m_edit, &QLineEdit::returnPressed, this, &TagsField::commit);
    connect(&theme, &Theme::changed, this, &TagsField::applyTheme);
    applyTheme();
}

void TagsField::applyTheme()
{
    m_edit->setFont(m_theme.font(Theme::kBodySize));
    QPalette palette = m_theme.palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    m_edit->setPalette(palette);
    chipsChanged();
    update();
}

QStringList TagsField::tags() const
{
    QStringList tags;
    for (const TagChip* chip : m_chips)
        tags.append(chip->text());
    return tags;
}

QString TagsField::text() const
{
    QStringList all = tags();
    const QStringList more = splitTags(m_edit->text());
    for (const QString& tag : more)
        if (!all.contains(tag))
            all.append(tag);
    return joinedTags(all);
}

void TagsField::setText(const QString& text)
{
    if (text == this->text())
        return;
    qDeleteAll(std::exchange(m_chips, {}));
    m_edit->clear();
    const QStringList tags = splitTags(text);
    for (const QString& tag : tags)
        addChip(tag);
    chipsChanged();
}

void TagsField::setReadOnly(bool isReadOnly)
{
    m_edit->setReadOnly(isReadOnly);
    for (TagChip* chip : std::as_const(m_chips))
        chip->setRemovable(!isReadOnly);
}

/// All but what follows the last comma is done.
void TagsField::typed(const QString& text)
{
    const auto separator = std::find_if(text.crbegin(), text.crend(), isTagSeparator);
    if (separator != text.crend()) {
        const qsizetype done = std::distance(separator, text.crend());
        const QStringList all = tags();
        const QStringList typedTags = splitTags(text.first(done));
        for (const QString& tag : typedTags)
            if (!all.contains(tag))
                addChip(tag);
        m_edit->setText(text.sliced(done).trimmed());
        chipsChanged();
    }
    Q_EMIT edited();
}

void TagsField::commit()
{
    if (!m_edit->text().isEmpty() && !m_edit->isReadOnly())
        typed(m_edit->text() + QLatin1Char(','));
}

void TagsField::addChip(const QString& tag)
{
    auto* chip = new TagChip(m_theme, tag, this);
    connect(chip, &TagChip::removed, this, [this, chip] { removeChip(chip); });
    chip->show();
    m_chips.append(chip);
}

void TagsField::removeChip(TagChip* chip)
{
    m_chips.removeOne(chip);
    chip->hide();
    chip->deleteLater();
    m_edit->setFocus(Qt::OtherFocusReason);
    chipsChanged();
    Q_EMIT edited();
}

void TagsField::chipsChanged()
{
    m_edit->setPlaceholderText(m_chips.isEmpty() ? tr("标签，用逗号分隔") : QString());
    QWidget* before = nullptr;
    for (TagChip* chip : std::as_const(m_chips)) { // tab goes from left to right
        if (before != nullptr)
            setTabOrder(before, chip);
        before = chip;
    }
    if (before != nullptr)
        setTabOrder(before, m_edit);
    layOut();
    updateGeometry();
}

bool TagsField::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_edit)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::FocusOut) {
        commit();
        update();
    } else if (event->type() == QEvent::FocusIn) {
        update();
    } else if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool isAtStart = m_edit->cursorPosition() == 0 && !m_edit->hasSelectedText();
        if (key->key() == Qt::Key_Backspace && isAtStart && !m_chips.isEmpty() && !m_edit->isReadOnly()) {
            removeChip(m_chips.last());
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void TagsField::mousePressEvent(QMouseEvent*)
{
    m_edit->setFocus(Qt::MouseFocusReason);
}

// --- layout -----------------------------------------------------------------

TagsField::Placed TagsField::placed(int width) const
{
    Placed placed;
    const int least = m_theme.scaled(FieldFrame::kHeight);
    const int line = least - 2 * kPadding;
    const int room = std::max(1, width - 2 * kPadding);
    QPoint at(kPadding, kPadding);
    const auto fit = [&](int wanted) {
        const int taken = std::min(wanted, room);
        if (at.x() > kPadding && at.x() + taken > kPadding + room)
            at = {kPadding, at.y() + line + kGap};
        const QPoint place = at;
        at.rx() += taken + kGap;
        return QRect(place, QSize(taken, line));
    };
    for (const TagChip* chip : m_chips)
        placed.chips.append(fit(chip->sizeHint().width()));
    placed.edit = fit(m_theme.scaled(kSmallestEdit));
    const int left = m_chips.isEmpty() ? FieldFrame::kPadding - kOwnMargin : placed.edit.left();
    placed.edit.setLeft(left);
    placed.edit.setRight(kPadding + room - 1);
    placed.height = std::max(least, placed.edit.bottom() + 1 + kPadding);
    return placed;
}

int TagsField::heightForWidth(int width) const
{
    return placed(width).height;
}

QSize TagsField::sizeHint() const
{
    constexpr int kWidth = 120;
    return {kWidth, placed(std::max(width(), kWidth)).height};
}

void TagsField::resizeEvent(QResizeEvent*)
{
    layOut();
    updateGeometry();
}

void TagsField::layOut()
{
    const Placed places = placed(width());
    for (qsizetype index = 0; index < m_chips.size(); ++index)
        m_chips.at(index)->setGeometry(places.chips.at(index));
    m_edit->setGeometry(places.edit);
}

void TagsField::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    FieldFrame::paint(painter, m_theme, rect(), m_edit->hasFocus());
}

} // namespace tessary
