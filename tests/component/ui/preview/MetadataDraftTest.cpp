#include "ui/preview/MetadataDraft.h"

#include "tests/support/RecordSamples.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

ScreenshotRecord record(const QStringList& tags, const QString& note)
{
    ScreenshotRecord record = testing::textRecord(QStringLiteral("text"));
    record.tags = tags;
    record.note = note;
    return record;
}

const QString kOne = QStringLiteral("one");
const QString kTwo = QStringLiteral("two");

TEST(MetadataDraftTest, AtFirstNothingIsChanged)
{
    const MetadataDraft draft(record({kOne, kTwo}, QStringLiteral("note")));
    EXPECT_FALSE(draft.isDirty());
    EXPECT_EQ(draft.tagsText(), QStringLiteral("one, two"));
    EXPECT_EQ(draft.note(), QStringLiteral("note"));
}

TEST(MetadataDraftTest, OtherBlanksAreNoChangeAndTypingItBackIsNone)
{
    MetadataDraft draft(record({kOne, kTwo}, {}));
    draft.setTagsText(QStringLiteral("one ，two,"));
    EXPECT_FALSE(draft.isDirty());
    draft.setNote(QStringLiteral("x"));
    EXPECT_TRUE(draft.isDirty());
    draft.setNote({});
    EXPECT_FALSE(draft.isDirty());
}

TEST(MetadataDraftTest, WhatIsNotEditedFollowsTheLibrary)
{
    MetadataDraft draft(record({kOne}, QStringLiteral("old")));
    draft.setNote(QStringLiteral("mine"));
    draft.follow(record({kOne, kTwo}, QStringLiteral("theirs")));
    EXPECT_EQ(draft.tagsText(), QStringLiteral("one, two"));
    EXPECT_EQ(draft.note(), QStringLiteral("mine"));
    EXPECT_TRUE(draft.isDirty());
}

TEST(MetadataDraftTest, WhenTheLibraryComesToHaveTheSameNothingIsUnsaved)
{
    MetadataDraft draft(record({}, {}));
    draft.setTagsText(kOne);
    draft.follow(record({kOne}, {}));
    EXPECT_FALSE(draft.isDirty());
}

TEST(MetadataDraftTest, WhatIsTypedWhileItIsSavedStaysUnsaved)
{
    MetadataDraft draft(record({}, {}));
    draft.setNote(QStringLiteral("first"));
    const QString saved = draft.note();
    draft.setNote(QStringLiteral("first and more"));
    draft.saved({}, saved);
    EXPECT_TRUE(draft.isDirty());
    EXPECT_EQ(draft.note(), QStringLiteral("first and more"));
}

TEST(MetadataDraftTest, AnUntouchedTagWithACommaStaysOne)
{
    const QStringList tags{QStringLiteral("with, comma")};
    MetadataDraft draft(record(tags, {}));
    EXPECT_FALSE(draft.isDirty());
    draft.setNote(QStringLiteral("x"));
    EXPECT_EQ(draft.tags(), tags);
}

} // namespace
} // namespace tessary
