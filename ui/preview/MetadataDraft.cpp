#include "ui/preview/MetadataDraft.h"

#include "ui/preview/TagsText.h"

namespace tessary {

MetadataDraft::MetadataDraft(const ScreenshotRecord& record)
    : m_savedTags(record.tags),
      m_savedNote(record.note),
      m_tagsText(joinedTags(record.tags)),
      m_note(record.note)
{
}

/// A tag may have a comma in it that came from elsewhere; untouched, it stays one tag.
QStringList MetadataDraft::tags() const
{
    return m_tagsText == joinedTags(m_savedTags) ? m_savedTags : splitTags(m_tagsText);
}

void MetadataDraft::follow(const ScreenshotRecord& record)
{
    if (!areTagsEdited())
        m_tagsText = joinedTags(record.tags);
    if (!isNoteEdited())
        m_note = record.note;
    m_savedTags = record.tags;
    m_savedNote = record.note;
}

void MetadataDraft::saved(const QStringList& tags, const QString& note)
{
    m_savedTags = tags;
    m_savedNote = note;
}

} // namespace tessary
