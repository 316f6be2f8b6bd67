#include "ui/settings/RemovableEntries.h"

#include "ui/kit/SymbolButton.h"
#include "ui/settings/SettingsCard.h"
#include "ui/settings/SettingsRow.h"

#include <algorithm>

namespace tessary {

RemovableEntries::RemovableEntries(const Theme& theme, SettingsCard& card, QString symbol,
                                   Placeholder placeholder)
    : QObject(&card),
      m_theme(theme),
      m_card(card),
      m_symbol(std::move(symbol)),
      m_placeholder(std::move(placeholder))
{
    build();
}

void RemovableEntries::show(const QStringList& entries)
{
    if (entries == m_entries)
        return;
    m_entries = entries;
    build();
}

void RemovableEntries::setName(const QString& entry, const QString& name)
{
    if (m_names.value(entry) == name)
        return;
    m_names.insert(entry, name);
    if (m_entries.contains(entry))
        build();
}

void RemovableEntries::setPicture(const QString& entry, const QImage& picture)
{
    m_pictures.insert(entry, picture);
    if (SettingsRow* row = rowOf(entry))
        row->setPicture(picture);
}

SettingsRow* RemovableEntries::rowOf(const QString& entry)
{
    const qsizetype index = m_entries.indexOf(entry);
    return index >= 0 ? m_card.rows().value(index) : nullptr;
}

void RemovableEntries::build()
{
    const int focused = focusedRow();
    QList<SettingsRow*> rows;
    for (const QString& entry : std::as_const(m_entries)) {
        const QString name = m_names.value(entry, entry);
        auto* row = new SettingsRow(m_theme, m_symbol, {});
        row->setLabelElided(name);
        row->setPicture(m_pictures.value(entry));
        auto* remove = new SymbolButton(m_theme, QStringLiteral("minus.circle"));
        const QString text = tr("取消排除 ") + name;
        remove->setText(text);
        remove->setToolTip(text);
        remove->setAccessibleName(text);
        row->addControl(*remove, SettingsRow::Bleed::Frame);
        connect(remove, &QAbstractButton::clicked, this, [this, entry] { Q_EMIT removalRequested(entry); });
        rows.append(row);
    }
    if (rows.isEmpty()) {
        auto* row = new SettingsRow(m_theme, m_placeholder.symbol, m_placeholder.text);
        row->setPlaceholder();
        rows.append(row);
    }
    m_card.replace(rows);
    if (focused >= 0)
        focusRow(focused);
}

int RemovableEntries::focusedRow() const
{
    const QList<SettingsRow*>& rows = m_card.rows();
    const auto found = std::find_if(rows.cbegin(), rows.cend(), [](const SettingsRow* row) {
        const auto* button = row->findChild<SymbolButton*>();
        return button != nullptr && button->hasFocus();
    });
    return found != rows.cend() ? static_cast<int>(found - rows.cbegin()) : -1;
}

void RemovableEntries::focusRow(int index)
{
    const QList<SettingsRow*>& rows = m_card.rows();
    const int last = static_cast<int>(rows.size()) - 1;
    if (auto* button = rows.at(std::min(index, last))->findChild<SymbolButton*>()) {
        button->setFocus(Qt::TabFocusReason);
        return;
    }
}

} // namespace tessary
