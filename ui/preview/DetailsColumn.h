#pragma once

#include "store/ScreenshotRecord.h"
#include "ui/quicksearch/ItemFacts.h"
#include "ui/quicksearch/TileImages.h"

#include <QLabel>
#include <QScrollArea>

class QGridLayout;

namespace tessary {

class MetadataDraft;
class NoteEditor;
class PushButton;
class SourceIcon;
class TagsField;
class Theme;

/// What is known about the item, and what the person says about it. Scrolls where it has no room.
class DetailsColumn : public QScrollArea {
    Q_OBJECT
public:
    static constexpr int kWidth = 280;

    /// @param tiles bring the application's icon; they outlive this.
    DetailsColumn(const Theme& theme, TileImages& tiles, QWidget* parent = nullptr);

    /// @param isCut whether the record's text is only the beginning of the item's.
    void setFacts(const ScreenshotRecord& record, bool isCut);
    void setDraft(const MetadataDraft& draft);
    void setSaveEnabled(bool isEnabled);
    void setReadOnly(bool isReadOnly);

    [[nodiscard]] QString tagsText() const;
    [[nodiscard]] QString note() const;
    [[nodiscard]] TagsField& tagsField() const { return *m_tags; }
    [[nodiscard]] NoteEditor& noteEditor() const { return *m_note; }
    [[nodiscard]] PushButton& saveButton() const { return *m_save; }
    /// The values, top to bottom, the source first.
    [[nodiscard]] const QList<QLabel*>& values() const { return m_values; }

Q_SIGNALS:
    void edited();
    void saveAsked();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLabel* addLabel(const QString& text);
    QLabel* addValue();
    QWidget* facts();
    void applyTheme();

    const Theme& m_theme;
    QWidget* m_content;
    SourceIcon* m_icon;
    QList<QLabel*> m_headings;
    QList<QLabel*> m_labels;
    QList<QLabel*> m_values;
    QGridLayout* m_rows = nullptr;
    TagsField* m_tags;
    NoteEditor* m_note;
    PushButton* m_save;
};

} // namespace tessary
