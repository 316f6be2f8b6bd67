#include "recognition/RecognizedTextEdit.h"

#include "ui/kit/Theme.h"

#include <QInputMethodEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace tessary {
namespace {

using namespace Qt::StringLiterals;

TEST(RecognizedTextEditTest, CharactersAreCountedAsAPersonCountsThem)
{
    EXPECT_EQ(RecognizedTextEdit::characterCount({}), 0);
    EXPECT_EQ(RecognizedTextEdit::characterCount(u"识别ab"_s), 4);
    EXPECT_EQ(RecognizedTextEdit::characterCount(u"e\u0301"_s), 1);
    EXPECT_EQ(RecognizedTextEdit::characterCount(u"𠮷👍🏽"_s), 2);
    EXPECT_EQ(RecognizedTextEdit::characterCount(u"a\nb\r\nc"_s), 5);
}

TEST(RecognizedTextEditTest, TheTextIsKeptToTheLastCharacter)
{
    const Theme theme;
    const QString text = u"甲\u00a0乙\u2003\t丙\n\n末"_s;
    RecognizedTextEdit edit(theme, text);
    EXPECT_EQ(edit.text(), text);
    edit.moveCursor(QTextCursor::End);
    edit.insertPlainText(u"\n"_s);
    EXPECT_EQ(edit.text(), text + u'\n');
}

TEST(RecognizedTextEditTest, EditingCanBeUndoneToTheRecognisedText)
{
    const Theme theme;
    RecognizedTextEdit edit(theme, u"识别"_s);
    EXPECT_FALSE(edit.document()->isUndoAvailable());
    QTest::keyClicks(&edit, u"ab"_s);
    EXPECT_EQ(edit.text(), u"ab识别"_s);
    edit.undo();
    EXPECT_EQ(edit.text(), u"识别"_s);
    EXPECT_FALSE(edit.document()->isUndoAvailable());
}

TEST(RecognizedTextEditTest, InputMethodsWriteIntoIt)
{
    const Theme theme;
    RecognizedTextEdit edit(theme, u"文"_s);
    edit.moveCursor(QTextCursor::End);
    QInputMethodEvent event;
    event.setCommitString(u"字"_s);
    QCoreApplication::sendEvent(&edit, &event);
    EXPECT_EQ(edit.text(), u"文字"_s);
}

class Pasting : public RecognizedTextEdit {
public:
    using RecognizedTextEdit::insertFromMimeData;
    using RecognizedTextEdit::RecognizedTextEdit;
};

TEST(RecognizedTextEditTest, PastingTakesThePlainTextOnly)
{
    const Theme theme;
    Pasting edit(theme, {});
    QMimeData data;
    data.setText(u"粗体"_s);
    data.setHtml(u"<b>粗体</b><img src='x.png'>"_s);
    edit.insertFromMimeData(&data);
    EXPECT_EQ(edit.text(), u"粗体"_s);
    edit.selectAll();
    EXPECT_NE(edit.textCursor().charFormat().fontWeight(), QFont::Bold);
    QMimeData picture;
    picture.setImageData(QImage(2, 2, QImage::Format_RGB32));
    edit.insertFromMimeData(&picture);
    EXPECT_EQ(edit.text(), u"粗体"_s);
}

TEST(RecognizedTextEditTest, LongLinesAreBrokenAndNeverScrollSideways)
{
    const Theme theme;
    RecognizedTextEdit edit(theme, u"长"_s.repeated(3000) + u"\n"_s + u"x"_s.repeated(3000));
    edit.resize(374, 264);
    edit.show();
    EXPECT_LE(edit.document()->idealWidth(), edit.viewport()->width());
}

} // namespace
} // namespace tessary
