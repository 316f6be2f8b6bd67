#include "tests/component/ui/settings/SettingsFixture.h"
#include "ui/kit/Menu.h"
#include "ui/kit/Picker.h"
#include "ui/kit/Switch.h"

#include "ui/quicksearch/ItemFacts.h"

#include <QAccessible>
#include <QDir>
#include <QFileDialog>
#include <QLabel>

namespace tessary {
namespace {

using testing::eventually;

constexpr const char* kRetention = "回收站保留时间";
constexpr const char* kLimit = "最大存储空间";

class StorageSettingsTest : public testing::SettingsFixture {
protected:
    Picker& picker(const char* row) { return control<Picker>(row); }
    QStringList choices(const char* row)
    {
        QStringList texts;
        for (int i = 0; i < picker(row).count(); ++i)
            texts.append(picker(row).itemText(i));
        return texts;
    }
    void choose(const char* row, const QString& text)
    {
        picker(row).showPopup();
        ASSERT_NE(picker(row).menu(), nullptr);
        for (QAction* action : picker(row).menu()->actions()) {
            if (action->text() == text)
                return action->trigger();
        }
        FAIL() << "no choice " << text.toStdString();
    }
};

TEST_F(StorageSettingsTest, ThePickersHaveTheirChoices)
{
    open(SettingsTab::Storage);
    EXPECT_EQ(choices(kRetention),
              (QStringList{QStringLiteral("7 天"), QStringLiteral("30 天"), QStringLiteral("1 年")}));
    EXPECT_EQ(choices(kLimit),
              (QStringList{QStringLiteral("不限制"), QStringLiteral("1 GB"), QStringLiteral("5 GB"),
                           QStringLiteral("10 GB"), QStringLiteral("50 GB")}));
    EXPECT_EQ(picker(kRetention).currentText(), QStringLiteral("30 天"));
    EXPECT_EQ(picker(kLimit).currentText(), QStringLiteral("不限制"));
}

TEST_F(StorageSettingsTest, ChoosingAssignsTheSetting)
{
    open(SettingsTab::Storage);
    choose(kRetention, QStringLiteral("1 年"));
    EXPECT_EQ(settings().trashRetentionDays(), 365);
    choose(kLimit, QStringLiteral("5 GB"));
    EXPECT_EQ(settings().maxStorageGB(), 5);
}

TEST_F(StorageSettingsTest, ThePickersFollowAChangeFromElsewhere)
{
    open(SettingsTab::Storage);
    settings().setTrashRetentionDays(7);
    settings().setMaxStorageGB(50);
    EXPECT_EQ(picker(kRetention).currentText(), QStringLiteral("7 天"));
    EXPECT_EQ(picker(kLimit).currentText(), QStringLiteral("50 GB"));
}

TEST_F(StorageSettingsTest, AStoredValueThatIsNoChoiceIsShownAndKept)
{
    defaults.set(QStringLiteral("trashRetentionDays"), 14);
    const AppSettings fresh(defaults, screenshotTool, folders);
    Picker shown(theme, {7, 30, 365}, [](int days) { return QString::number(days); });
    shown.setValue(fresh.trashRetentionDays());
    EXPECT_EQ(shown.currentText(), QStringLiteral("14"));
    open(SettingsTab::Storage);
    settings().setTrashRetentionDays(14);
    EXPECT_EQ(picker(kRetention).currentText(), QStringLiteral("14 天"));
    EXPECT_EQ(choices(kRetention), (QStringList{QStringLiteral("7 天"), QStringLiteral("14 天"),
                                                QStringLiteral("30 天"), QStringLiteral("1 年")}));
    EXPECT_EQ(settings().trashRetentionDays(), 14);
    choose(kRetention, QStringLiteral("7 天"));
    EXPECT_EQ(choices(kRetention).size(), 3);
}

TEST_F(StorageSettingsTest, TheWheelChangesNothing)
{
    open(SettingsTab::Storage);
    auto& retention = picker(kRetention);
    QWheelEvent turn(QPointF(5, 5), retention.mapToGlobal(QPointF(5, 5)), {}, {0, -240}, Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&retention, &turn);
    EXPECT_EQ(settings().trashRetentionDays(), 30);
}

TEST_F(StorageSettingsTest, ArrowKeysChoose)
{
    open(SettingsTab::Storage);
    picker(kRetention).setFocus();
    QTest::keyClick(&picker(kRetention), Qt::Key_Up);
    EXPECT_EQ(settings().trashRetentionDays(), 7);
}

TEST_F(StorageSettingsTest, APickerIsAComboBoxWithItsNameForScreenReaders)
{
    open(SettingsTab::Storage);
    auto* face = QAccessible::queryAccessibleInterface(&picker(kLimit));
    ASSERT_NE(face, nullptr);
    EXPECT_EQ(face->role(), QAccessible::ComboBox);
    const auto labels = face->relations(QAccessible::Label);
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels.first().first->text(QAccessible::Name), QString::fromUtf8(kLimit));
}

TEST_F(StorageSettingsTest, CleaningUpIsASwitch)
{
    open(SettingsTab::Storage);
    auto& cleanup = control<Switch>("超过上限时自动清理");
    EXPECT_FALSE(cleanup.isChecked());
    QTest::mouseClick(&cleanup, Qt::LeftButton);
    EXPECT_TRUE(settings().automaticStorageCleanup());
    settings().setAutomaticStorageCleanup(false);
    EXPECT_FALSE(cleanup.isChecked());
}

TEST_F(StorageSettingsTest, TheFolderIsChosenAndWatchedAnew)
{
    open(SettingsTab::Storage);
    runtime.toggleMonitoring();
    ASSERT_FALSE(runtime.isMonitoring());
    click(QStringLiteral("选择..."));
    auto* dialog = page().findChild<QFileDialog*>();
    ASSERT_NE(dialog, nullptr);
    const QString chosen = folder.path() + QStringLiteral("/pictures");
    ASSERT_TRUE(QDir().mkpath(chosen));
    Q_EMIT dialog->fileSelected(chosen + u'/');
    EXPECT_EQ(settings().monitoredDirectory(), chosen);
    EXPECT_TRUE(runtime.isMonitoring());
    dialog->close();
}

TEST_F(StorageSettingsTest, ALongFolderIsShortenedInTheMiddleWithTheWholeInTheTooltip)
{
    open(SettingsTab::Storage);
    const QString path = QStringLiteral("/srv/") + QString(300, u'x') + QStringLiteral("/last");
    settings().setMonitoredDirectory(path);
    const auto texts = row("系统截图监听目录").findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(texts.begin(), texts.end(), [&](const QLabel* text) {
        return text->toolTip() == path && text->text().size() < path.size() &&
               text->text().endsWith(QStringLiteral("last"));
    }));
    EXPECT_LE(page().widget()->width(), page().viewport()->width());
}

TEST_F(StorageSettingsTest, TheLibraryIsShownInTheFileManager)
{
    open(SettingsTab::Storage);
    click(QStringLiteral("在访达中显示"));
    EXPECT_TRUE(eventually([this] { return fileManager.revealed() == QStringList{runtime.paths()->root}; }));
}

TEST_F(StorageSettingsTest, TheSizeIsMeasuredAnewOnDemand)
{
    open(SettingsTab::Storage);
    const auto* amount = page().findChild<QLabel*>(QStringLiteral("storageBytes"));
    ASSERT_NE(amount, nullptr);
    ASSERT_TRUE(eventually([this] { return runtime.storageBytes() > 0; }));
    EXPECT_EQ(amount->text(), byteCountText(runtime.storageBytes()));
    const qint64 before = runtime.storageBytes();
    QFile file(runtime.paths()->originals + QStringLiteral("/more"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(5'000'000, 'x'));
    file.close();
    click(QStringLiteral("重新计算当前占用"));
    ASSERT_TRUE(eventually([&] { return runtime.storageBytes() > before; }));
    EXPECT_EQ(amount->text(), byteCountText(runtime.storageBytes()));
}

} // namespace
} // namespace tessary
