#include "ui/preview/PreviewDetailView.h"

#include "app/AppRuntime.h"
#include "tests/support/Await.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FakeWindows.h"
#include "tests/support/RecordSamples.h"
#include "ui/kit/Banner.h"
#include "ui/kit/EmptyState.h"
#include "ui/kit/Sheet.h"
#include "ui/kit/Theme.h"
#include "ui/preview/DetailsColumn.h"
#include "ui/preview/NoteEditor.h"
#include "ui/preview/NoticeBar.h"
#include "ui/preview/PictureCanvas.h"
#include "ui/preview/PreviewSurroundings.h"
#include "ui/preview/PreviewWindow.h"
#include "ui/preview/PreviewWindowController.h"
#include "ui/preview/TagsField.h"
#include "ui/preview/TextCanvas.h"
#include "ui/preview/ToolbarButton.h"
#include "ui/preview/ZoomBar.h"
#include "ui/quicksearch/TextPage.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QInputMethodEvent>
#include <QSignalSpy>

namespace tessary {
namespace {

using testing::await;
using testing::eventually;
using Action = PreviewToolbar::Action;

class PreviewDetailViewTest : public ::testing::Test, protected testing::FakePlatform {
protected:
    void SetUp() override { await(runtime.start()); }
    ~PreviewDetailViewTest() override
    {
        controllers.clear();
        await(runtime.shutDown());
    }

    ScreenshotRecord stored(ScreenshotRecord record)
    {
        EXPECT_TRUE(await(runtime.store()->insert(record)));
        return record;
    }
    ScreenshotRecord storedText(const QString& text = QStringLiteral("first line\nsecond"))
    {
        return stored(testing::textRecord(text));
    }
    ScreenshotRecord storedPicture(const QString& path)
    {
        ScreenshotRecord record = testing::pictureRecord(1772701623, 9'600'000);
        record.libraryPath = path;
        record.filename = QStringLiteral("截屏 1.png");
        record.pixelWidth = 4032;
        record.pixelHeight = 3024;
        record.duplicateCount = 2;
        record.sourceAppName = QStringLiteral("Firefox");
        return stored(record);
    }
    PreviewDetailView& open(const ScreenshotRecord& record)
    {
        auto& controller = *controllers.emplace_back(
            std::make_unique<PreviewWindowController>(record, runtime, surroundings));
        QObject::connect(&controller, &PreviewWindowController::windowWillClose, &runtime,
                         [this] { ++closed; });
        controller.present();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&controller.window()));
        return controller.view();
    }
    PreviewWindow& window() { return controllers.back()->window(); }
    QCoro::Task<QImage> load(QString path, int)
    {
        QImage image;
        if (path == QStringLiteral("there.png")) {
            image = QImage(403, 302, QImage::Format_RGB32);
            image.fill(Qt::red);
        }
        co_return image;
    }
    static QCoro::Task<QImage> noPart(QString, QRect, QSize) { co_return QImage(); }

    ScreenshotRecord inLibrary(const ScreenshotRecord& record)
    {
        return await(runtime.item(record.id)).value_or(ScreenshotRecord());
    }
    static void type(PreviewDetailView& view, const QString& note)
    {
        QTest::keyClicks(&view.findChild<NoteEditor*>()->edit(), note);
    }
    static void press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(widget.window()->windowHandle(), key, modifiers);
    }
    static ToolbarButton& button(PreviewDetailView& view, Action action)
    {
        return view.findChild<PreviewToolbar*>()->button(action);
    }
    static Sheet* sheet(PreviewDetailView& view)
    {
        const auto sheets = view.findChildren<Sheet*>();
        for (Sheet* each : sheets)
            if (each->isVisible())
                return each;
        return nullptr;
    }
    static void choose(PreviewDetailView& view, const QString& text)
    {
        for (auto* each : sheet(view)->findChildren<PushButton*>())
            if (each->text() == text)
                return each->click();
        FAIL() << "no such choice";
    }
    /// Picks the file in the dialog that is open.
    void chooseFile(PreviewDetailView& view, const QString& path)
    {
        const auto dialogs = view.findChildren<QFileDialog*>();
        ASSERT_FALSE(dialogs.isEmpty());
        ASSERT_TRUE(dialogs.last()->isVisible());
        Q_EMIT dialogs.last()->fileSelected(path);
        dialogs.last()->close();
    }

    testing::FakeWindows windows;
    AppRuntime runtime{platform, windows};
    Theme theme;
    PreviewSurroundings surroundings{
        theme, [this](QString path, int pixels) { return load(std::move(path), pixels); }, &noPart};
    std::vector<std::unique_ptr<PreviewWindowController>> controllers;
    int closed = 0;
};

// --- the window and what it shows -------------------------------------------

TEST_F(PreviewDetailViewTest, TheWindowIsNamedAfterTheItemAndFitsTheScreen)
{
    open(storedText());
    EXPECT_EQ(window().windowTitle(), QStringLiteral("first line second"));
    const QSize screen = window().screen()->availableSize();
    EXPECT_LE(window().height(), screen.height());
    EXPECT_EQ(window().size(), QSize(920, 680).boundedTo(screen - QSize(16, 48)));
    EXPECT_EQ(window().minimumSize(), QSize(680, 480));
}

TEST_F(PreviewDetailViewTest, AMissingPictureIsSaidWhileItsFactsAreShown)
{
    auto& view = open(storedPicture(QStringLiteral("gone.png")));
    auto* canvas = view.findChild<PictureCanvas*>();
    ASSERT_TRUE(eventually([&] { return canvas->state() == AsyncFileImage::State::Unavailable; }));
    const auto* missing = canvas->findChild<EmptyState*>();
    EXPECT_TRUE(missing->isVisible());
    EXPECT_EQ(missing->accessibleName(), QStringLiteral("无法载入图片"));
    EXPECT_EQ(missing->accessibleDescription(), QStringLiteral("原始图片可能已被移动或删除"));
    QStringList values;
    for (const QLabel* value : view.findChild<DetailsColumn*>()->values())
        values.append(value->text());
    EXPECT_EQ(values.first(), QStringLiteral("Firefox"));
    EXPECT_EQ(values.mid(2), (QStringList{QStringLiteral("图片（PNG）"), QStringLiteral("4032 × 3024"),
                                          QStringLiteral("9.6 MB"), QStringLiteral("2")}));
}

TEST_F(PreviewDetailViewTest, ATextThatWasCutForAListIsShownWhole)
{
    const QString whole = QStringLiteral("一行\n").repeated(10'000);
    ScreenshotRecord record = storedText(whole);
    record.textContent.truncate(20'000);
    auto& view = open(record);
    auto* page = view.findChild<TextPage*>();
    EXPECT_TRUE(eventually([&] { return page->shownText().size() == whole.size(); }));
}

TEST_F(PreviewDetailViewTest, NothingIsLostAtTheSmallestSizeWithTheLargestText)
{
    auto& view = open(storedPicture(QStringLiteral("there.png")));
    theme.setTextScale(2);
    window().resize(window().minimumSize());
    for (const Action action :
         {Action::Copy, Action::Reveal, Action::Favorite, Action::Pin, Action::Export, Action::Delete}) {
        const ToolbarButton& each = button(view, action);
        EXPECT_TRUE(each.parentWidget()->rect().contains(each.geometry())) << each.text().toStdString();
    }
    EXPECT_TRUE(view.rect().contains(view.findChild<DetailsColumn*>()->geometry()));
    EXPECT_GE(view.findChild<PictureCanvas*>()->width(), 300);
}

// --- zoom -------------------------------------------------------------------

TEST_F(PreviewDetailViewTest, KeysAndButtonsZoomByTheStep)
{
    auto& view = open(storedPicture(QStringLiteral("there.png")));
    auto* bar = view.findChild<ZoomBar*>();
    EXPECT_EQ(bar->percentText(), QStringLiteral("100%"));
    press(view, Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(view.scale(), 1.2);
    press(view, Qt::Key_Equal, Qt::ControlModifier);
    EXPECT_EQ(bar->percentText(), QStringLiteral("140%"));
    press(view, Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(view.scale(), 1.0);
    for (const double expected : {0.8, 0.6, 0.4, 0.25, 0.25}) {
        press(view, Qt::Key_Minus, Qt::ControlModifier);
        EXPECT_EQ(view.scale(), expected);
    }
    EXPECT_EQ(view.findChild<PictureCanvas*>()->scale(), 0.25);
    view.setScale(3.9);
    press(view, Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier);
    EXPECT_EQ(view.scale(), 4.0);
    press(view, Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(view.scale(), 4.0);
}

TEST_F(PreviewDetailViewTest, ATextIsZoomedToo)
{
    auto& view = open(storedText());
    press(view, Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(view.findChild<TextCanvas*>()->scale(), 1.2);
}

// --- actions ----------------------------------------------------------------

TEST_F(PreviewDetailViewTest, LabelsSayWhatTheClickDoes)
{
    const ScreenshotRecord record = storedText();
    auto& view = open(record);
    EXPECT_EQ(button(view, Action::Favorite).text(), QStringLiteral("收藏"));
    EXPECT_EQ(button(view, Action::Pin).text(), QStringLiteral("置顶"));
    button(view, Action::Favorite).click();
    button(view, Action::Pin).click();
    EXPECT_TRUE(eventually([&] { return inLibrary(record).isFavorite && inLibrary(record).isPinned; }));
    EXPECT_EQ(button(view, Action::Favorite).text(), QStringLiteral("取消收藏"));
    EXPECT_EQ(button(view, Action::Pin).text(), QStringLiteral("取消置顶"));
    button(view, Action::Favorite).click();
    EXPECT_TRUE(eventually([&] { return !inLibrary(record).isFavorite; }));
    EXPECT_FALSE(view.isFavorite());
    EXPECT_TRUE(view.isPinned());
}

TEST_F(PreviewDetailViewTest, TwoQuickClicksLeaveItAsItWas)
{
    const ScreenshotRecord record = storedText();
    auto& view = open(record);
    button(view, Action::Favorite).click();
    button(view, Action::Favorite).click();
    QSignalSpy changes(&runtime, &AppRuntime::libraryChanged);
    ASSERT_TRUE(eventually([&] { return changes.size() == 2; }));
    EXPECT_FALSE(inLibrary(record).isFavorite);
    EXPECT_FALSE(view.isFavorite());
}

TEST_F(PreviewDetailViewTest, CtrlCCopiesTheItemUnlessTextIsSelected)
{
    auto& view = open(storedText());
    QSignalSpy used(&runtime, &AppRuntime::libraryChanged);
    press(view, Qt::Key_C, Qt::ControlModifier);
    ASSERT_TRUE(eventually([&] { return used.size() == 1; }));
    view.findChild<TextPage*>()->view().selectAll();
    press(view, Qt::Key_C, Qt::ControlModifier);
    EXPECT_FALSE(eventually([&] { return used.size() > 1; }, std::chrono::milliseconds(100)));
}

TEST_F(PreviewDetailViewTest, AFileIsRevealedAndATextSaysItHasNone)
{
    auto& picture = open(storedPicture(QStringLiteral("there.png")));
    button(picture, Action::Reveal).click();
    EXPECT_TRUE(eventually([&] { return fileManager.revealed().size() == 1; }));
    auto& text = open(storedText());
    button(text, Action::Reveal).click();
    EXPECT_FALSE(text.findChild<Banner*>()->message().isEmpty());
}

TEST_F(PreviewDetailViewTest, DeleteMovesToTheTrashAndCloses)
{
    const ScreenshotRecord record = storedText();
    auto& view = open(record);
    press(view, Qt::Key_Delete);
    EXPECT_TRUE(eventually([&] { return closed == 1; }));
    EXPECT_TRUE(inLibrary(record).isDeleted);
}

TEST_F(PreviewDetailViewTest, DeleteWhileEditingDeletesText)
{
    const ScreenshotRecord record = storedText();
    auto& view = open(record);
    view.findChild<NoteEditor*>()->setFocus();
    press(view, Qt::Key_Delete);
    view.findChild<TagsField*>()->setFocus();
    press(view, Qt::Key_Delete);
    EXPECT_FALSE(eventually([&] { return closed > 0; }, std::chrono::milliseconds(100)));
    EXPECT_FALSE(inLibrary(record).isDeleted);
}

TEST_F(PreviewDetailViewTest, DeletingKeepsWhatWasTypedWithTheItem)
{
    const ScreenshotRecord record = storedText();
    auto& view = open(record);
    type(view, QStringLiteral("kept"));
    button(view, Action::Delete).click();
    ASSERT_TRUE(eventually([&] { return closed == 1; }));
    EXPECT_EQ(inLibrary(record).note, QStringLiteral("kept"));
}

// --- tags and note ----------------------------------------------------------

TEST_F(PreviewDetailViewTest, SaveIsEnabledOnlyWhenSomethingChanged)
{
    const ScreenshotRecord record = storedText();
    auto& view = open(record);
    const auto& save = view.findChild<DetailsColumn*>()->saveButton();
    EXPECT_FALSE(save.isEnabled());
    QInputMethodEvent typed;
    typed.setCommitString(QStringLiteral("一，two"));
    QCoreApplication::sendEvent(view.findChild<TagsField*>()->findChild<QLineEdit*>(), &typed);
    type(view, QStringLiteral("note"));
    EXPECT_TRUE(save.isEnabled());
    EXPECT_EQ(view.tagsText(), QStringLiteral("一, two"));
    press(view, Qt::Key_S, Qt::ControlModifier);
    ASSERT_TRUE(eventually([&] { return !save.isEnabled(); }));
    EXPECT_EQ(inLibrary(record).tags, (QStringList{QStringLiteral("一"), QStringLiteral("two")}));
    EXPECT_EQ(inLibrary(record).note, QStringLiteral("note"));
}

TEST_F(PreviewDetailViewTest, ClosingAsksAboutUnsavedEdits)
{
    const ScreenshotRecord record = storedText();
    auto& view = open(record);
    type(view, QStringLiteral("note"));
    press(view, Qt::Key_Escape);
    ASSERT_NE(sheet(view), nullptr);
    EXPECT_EQ(closed, 0);
    press(view, Qt::Key_Escape); // takes the question back
    EXPECT_EQ(sheet(view), nullptr);
    EXPECT_EQ(view.note(), QStringLiteral("note"));
    press(view, Qt::Key_W, Qt::ControlModifier);
    ASSERT_NE(sheet(view), nullptr);
    choose(view, QStringLiteral("保存"));
    EXPECT_TRUE(eventually([&] { return closed == 1; }));
    EXPECT_EQ(inLibrary(record).note, QStringLiteral("note"));
}

TEST_F(PreviewDetailViewTest, DiscardedEditsAreNotSaved)
{
    const ScreenshotRecord record = storedText();
    auto& view = open(record);
    type(view, QStringLiteral("note"));
    window().close();
    choose(view, QStringLiteral("不保存"));
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(inLibrary(record).note, QString());
}

TEST_F(PreviewDetailViewTest, WithoutEditsItClosesAtOnce)
{
    auto& view = open(storedText());
    press(view, Qt::Key_Escape);
    EXPECT_EQ(closed, 1);
}

TEST_F(PreviewDetailViewTest, AtTheEndOfTheProgramEditsAreSaved)
{
    const ScreenshotRecord record = storedText();
    auto& view = open(record);
    type(view, QStringLiteral("in a hurry"));
    view.saveAtEnd();
    controllers.clear();
    EXPECT_TRUE(eventually([&] { return inLibrary(record).note == QStringLiteral("in a hurry"); }));
}

// --- following the library --------------------------------------------------

TEST_F(PreviewDetailViewTest, AChangeElsewhereShowsAndUnsavedEditsStay)
{
    const ScreenshotRecord record = storedText();
    auto& view = open(record);
    type(view, QStringLiteral("mine"));
    await(runtime.toggleFavorite(record));
    await(runtime.saveMetadata(record, {QStringLiteral("theirs")}, QStringLiteral("their note")));
    EXPECT_TRUE(eventually([&] { return view.isFavorite() && view.tagsText() == QStringLiteral("theirs"); }));
    EXPECT_EQ(view.note(), QStringLiteral("mine"));
    EXPECT_EQ(view.findChild<NoteEditor*>()->text(), QStringLiteral("mine"));
    EXPECT_TRUE(view.hasUnsavedEdits());
}

TEST_F(PreviewDetailViewTest, AnItemTrashedElsewhereIsSaidAndCanStillBeCopied)
{
    const ScreenshotRecord record = storedText();
    auto& view = open(record);
    await(runtime.moveToTrash(record));
    ASSERT_TRUE(eventually([&] { return view.presence() == PreviewDetailView::Presence::InTrash; }));
    EXPECT_TRUE(view.findChild<NoticeBar*>()->isVisible());
    EXPECT_FALSE(button(view, Action::Delete).isEnabled());
    EXPECT_FALSE(button(view, Action::Favorite).isEnabled());
    EXPECT_TRUE(button(view, Action::Copy).isEnabled());
    EXPECT_EQ(closed, 0);
}

TEST_F(PreviewDetailViewTest, WhenEverythingIsClearedTheNoteCanStillBeSelected)
{
    auto& view = open(storedText());
    auto& other = open(storedText(QStringLiteral("other")));
    type(view, QStringLiteral("unsaved"));
    await(runtime.clearAllData());
    for (PreviewDetailView* each : {&view, &other}) {
        ASSERT_TRUE(eventually([&] { return each->presence() == PreviewDetailView::Presence::Gone; }));
        for (const Action action : {Action::Copy, Action::Reveal, Action::Export, Action::Delete})
            EXPECT_FALSE(button(*each, action).isEnabled());
    }
    auto& edit = view.findChild<NoteEditor*>()->edit();
    edit.selectAll();
    EXPECT_EQ(edit.textCursor().selectedText(), QStringLiteral("unsaved"));
    EXPECT_FALSE(view.findChild<DetailsColumn*>()->saveButton().isEnabled());
    other.window()->close();
    EXPECT_EQ(closed, 1);
    view.window()->close();
    ASSERT_NE(sheet(view), nullptr);
    choose(view, QStringLiteral("关闭"));
    EXPECT_EQ(closed, 2);
}

TEST_F(PreviewDetailViewTest, AWindowMayCloseWhileTheLibraryIsAsked)
{
    const ScreenshotRecord record = storedText();
    for (int i = 0; i < 30; ++i)
        open(record);
    runtime.perform(runtime.toggleFavorite(record));
    controllers.clear();
    EXPECT_TRUE(eventually([&] { return inLibrary(record).isFavorite; }));
}

// --- export -----------------------------------------------------------------

class PreviewExportTest : public PreviewDetailViewTest {
protected:
    static QByteArray bytes(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("nothing");
    }
    void write(const QString& path, const QByteArray& content)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    void begin(PreviewDetailView& view) { button(view, Action::Export).click(); }
};

TEST_F(PreviewExportTest, ATextIsWrittenWholeAsUtf8)
{
    const QString whole = QStringLiteral("汉字😀\n").repeated(5'000);
    ScreenshotRecord record = storedText(whole);
    record.textContent.truncate(20'000);
    auto& view = open(record);
    begin(view);
    const QString path = folder.file(QStringLiteral("out.txt"));
    chooseFile(view, path);
    EXPECT_TRUE(eventually([&] { return bytes(path) == whole.toUtf8(); }));
}

TEST_F(PreviewExportTest, APicturesOwnBytesAreWritten)
{
    const QString source = folder.file(QStringLiteral("source.png"));
    const QByteArray content = QByteArray("\x89PNG not really").repeated(1000);
    write(source, content);
    auto& view = open(storedPicture(source));
    begin(view);
    auto* dialog = view.findChild<QFileDialog*>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->acceptMode(), QFileDialog::AcceptSave);
    ASSERT_FALSE(dialog->selectedFiles().isEmpty());
    EXPECT_TRUE(dialog->selectedFiles().first().endsWith(QStringLiteral("/截屏 1.png")));
    const QString path = folder.file(QStringLiteral("out.png"));
    chooseFile(view, path);
    EXPECT_TRUE(eventually([&] { return bytes(path) == content; }));
    EXPECT_EQ(surroundings.pictureFolder, folder.path());
}

TEST_F(PreviewExportTest, AFailureIsToldInTheWindowAndInTheLastError)
{
    auto& view = open(storedText());
    begin(view);
    chooseFile(view, folder.file(QStringLiteral("no such folder/out.txt")));
    auto* banner = view.findChild<Banner*>();
    ASSERT_TRUE(eventually([&] { return !banner->message().isEmpty(); }));
    EXPECT_TRUE(banner->isVisible());
    EXPECT_EQ(runtime.lastError(), banner->message());
}

TEST_F(PreviewExportTest, AFileThatIsThereIsReplacedOnlyWhenThePersonSaysSo)
{
    const QString path = folder.file(QStringLiteral("out.txt"));
    write(path, "old");
    auto& view = open(storedText(QStringLiteral("new")));
    begin(view);
    chooseFile(view, path);
    ASSERT_TRUE(eventually([&] { return sheet(view) != nullptr; }));
    choose(view, QStringLiteral("取消"));
    EXPECT_EQ(bytes(path), "old");
    begin(view);
    chooseFile(view, path);
    ASSERT_TRUE(eventually([&] { return sheet(view) != nullptr; }));
    choose(view, QStringLiteral("替换"));
    EXPECT_TRUE(eventually([&] { return bytes(path) == "new"; }));
}

} // namespace
} // namespace tessary
