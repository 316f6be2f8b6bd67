#include "ui/preview/PreviewToolbar.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/Hairline.h"
#include "ui/kit/Theme.h"
#include "ui/preview/ToolbarButton.h"

namespace tessary {
namespace {

constexpr int kPadding = 12;
constexpr int kTop = 6;
constexpr int kGap = 4;
constexpr int kLineHeight = 32;
constexpr int kAroundLine = 12;

} // namespace

PreviewToolbar::PreviewToolbar(const Theme& theme, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_line(new Hairline(theme, Qt::Vertical, this))
{
    const auto add = [this](Action action, const char* symbol, const QString& text,
                            ToolbarButton::Role role = ToolbarButton::Role::Ordinary) {
        auto* button = new ToolbarButton(m_theme, QString::fromLatin1(symbol), text, role, this);
        connect(button, &QAbstractButton::clicked, this, [this, action] { Q_EMIT triggered(action); });
        m_buttons.append(button);
    };
    add(Action::Copy, "doc.on.doc", tr("复制"));
    add(Action::Reveal, "folder", tr("Finder"));
    add(Action::Favorite, "star", tr("收藏"));
    add(Action::Pin, "pin", tr("置顶"));
    add(Action::Export, "square.and.arrow.up", tr("导出"));
    add(Action::Delete, "trash", tr("删除"), ToolbarButton::Role::Destructive);
    setAccessibleRole(*this, QAccessible::ToolBar);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(&theme, &Theme::changed, this, [this] {
        layOut();
        updateGeometry();
    });
}

ToolbarButton& PreviewToolbar::button(Action action) const
{
    return *m_buttons.at(static_cast<int>(action));
}

void PreviewToolbar::setFavorite(bool isFavorite)
{
    button(Action::Favorite)
        .setOn(isFavorite, QStringLiteral("star.fill"), isFavorite ? tr("取消收藏") : tr("收藏"));
    layOut();
}

void PreviewToolbar::setPinned(bool isPinned)
{
    button(Action::Pin).setOn(isPinned, QStringLiteral("pin.fill"), isPinned ? tr("取消置顶") : tr("置顶"));
    layOut();
}

void PreviewToolbar::setActionEnabled(Action action, bool isEnabled)
{
    button(action).setEnabled(isEnabled);
}

int PreviewToolbar::fullWidth() const
{
    int width = 2 * kPadding + 2 * kAroundLine + 1 - kGap;
    for (const ToolbarButton* each : m_buttons)
        width += each->sizeWithLabel().width() + kGap;
    return width;
}

QSize PreviewToolbar::sizeHint() const
{
    return {fullWidth(), 2 * kTop + m_buttons.first()->sizeWithLabel().height()};
}

QSize PreviewToolbar::minimumSizeHint() const
{
    return {0, sizeHint().height()};
}

void PreviewToolbar::resizeEvent(QResizeEvent*)
{
    layOut();
}

void PreviewToolbar::layOut()
{
    const bool hasRoom = width() >= fullWidth();
    int left = kPadding;
    for (ToolbarButton* each : m_buttons) {
        each->setShowsLabel(hasRoom);
        if (each == m_buttons.last()) {
            left += kAroundLine - kGap;
            m_line->setGeometry(left, (height() - kLineHeight) / 2, 1, kLineHeight);
            left += 1 + kAroundLine;
        }
        const QSize size = each->sizeHint();
        each->setGeometry(left, (height() - size.height()) / 2, size.width(), size.height());
        left += size.width() + kGap;
    }
    updateGeometry();
}

} // namespace tessary
