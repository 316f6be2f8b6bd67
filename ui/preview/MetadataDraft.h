#pragma once

#include "store/ScreenshotRecord.h"

namespace tessary {

/// An item's tags and note as they are being edited, against what the library has.
class MetadataDraft {
public:
    explicit MetadataDraft(const ScreenshotRecord& record);

    [[nodiscard]] const QString& tagsText() const { return m_tagsText; }
    [[nodiscard]] QStringList tags() const;
    [[nodiscard]] const QString& note() const { return m_note; }
    void setTagsText(const QString& text) { m_tagsText = text; }
    void setNote(const QString& note) { m_note = note; }

    /// Whether saving would change anything.
    [[nodiscard]] bool isDirty() const { return areTagsEdited() || isNoteEdited(); }
    /// The library has something else by now: what is not edited follows it, what is edited stays.
    void follow(const ScreenshotRecord& record);
    /// These are in the library now. What was typed since stays.
    void saved(const QStringList& tags, const QString& note);

private:
    [[nodiscard]] bool areTagsEdited() const { return tags() != m_savedTags; }
    [[nodiscard]] bool isNoteEdited() const { return m_note != m_savedNote; }

    QStringList m_savedTags;
    QString m_savedNote;
    QString m_tagsText;
    QString m_note;
};

} // namespace tessary
