#pragma once

#include <QImage>
#include <QObject>
#include <QStringList>

namespace tessary {

class SettingsCard;
class SettingsRow;
class Theme;

/// The entries of a list in a card, each with a button that takes it off. Owned by the card.
class RemovableEntries : public QObject {
    Q_OBJECT
public:
    /// What stands there while the list is empty.
    struct Placeholder {
        QString symbol;
        QString text;
    };

    RemovableEntries(const Theme& theme, SettingsCard& card, QString symbol, Placeholder placeholder);

    /// The keyboard's focus stays at the place of the entry that is gone.
    void show(const QStringList& entries);
    [[nodiscard]] const QStringList& entries() const { return m_entries; }
    /// What an entry is called; itself when that was never said.
    void setName(const QString& entry, const QString& name);
    void setPicture(const QString& entry, const QImage& picture);

Q_SIGNALS:
    void removalRequested(const QString& entry);

private:
    void build();
    [[nodiscard]] SettingsRow* rowOf(const QString& entry);
    [[nodiscard]] int focusedRow() const;
    void focusRow(int index);

    const Theme& m_theme;
    SettingsCard& m_card;
    QString m_symbol;
    Placeholder m_placeholder;
    QStringList m_entries;
    QHash<QString, QString> m_names;
    QHash<QString, QImage> m_pictures;
};

} // namespace tessary
