#include "ui/quicksearch/SearchField.h"

#include "ui/kit/Theme.h"

#include <QInputMethodEvent>

namespace tessary {

SearchField::SearchField(const Theme& theme, QWidget* parent) : QLineEdit(parent), m_theme(theme)
{
    setFrame(false);
    setTextMargins(-2, 0, 0, 0); // what QLineEdit adds by itself
    setPlaceholderText(tr("搜索剪贴板文字、来源 App..."));
    setAccessibleName(tr("搜索剪贴板文字、来源 App..."));
    setContextMenuPolicy(Qt::NoContextMenu);
    connect(&theme, &Theme::changed, this, &SearchField::applyTheme);
    applyTheme();
}

void SearchField::applyTheme()
{
    setFont(m_theme.font(Theme::kSearchSize));
    QPalette palette = m_theme.palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    setPalette(palette);
}

void SearchField::inputMethodEvent(QInputMethodEvent* event)
{
    m_isComposing = !event->preeditString().isEmpty();
    QLineEdit::inputMethodEvent(event);
}

void SearchField::focusOutEvent(QFocusEvent* event)
{
    m_isComposing = false;
    QLineEdit::focusOutEvent(event);
}

} // namespace tessary
