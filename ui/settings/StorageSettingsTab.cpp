#include "ui/settings/StorageSettingsTab.h"

#include "app/AppRuntime.h"
#include "ui/kit/Picker.h"
#include "ui/kit/PushButton.h"
#include "ui/kit/SymbolButton.h"
#include "ui/kit/Theme.h"
#include "ui/kit/ThemedLabel.h"
#include "ui/quicksearch/ItemFacts.h"
#include "ui/settings/FolderChooser.h"
#include "ui/settings/SettingsCard.h"
#include "ui/settings/SettingsRow.h"

namespace tessary {
namespace {

const ThemedLabel::Look kValue{Theme::kBodySize, QFont::Normal, &ThemeColours::secondaryText, 20};
constexpr int kYear = 365;

} // namespace

StorageSettingsTab::StorageSettingsTab(const Theme& theme, AppRuntime& runtime, QWidget* parent)
    : SettingsPage(theme, parent),
      m_runtime(runtime)
{
    addPlaces();
    addLimits();
}

void StorageSettingsTab::addPlaces()
{
    AppSettings& settings = m_runtime.settings();
    SettingsCard& card = addGroup();
    SettingsRow& folder =
        card.add(new SettingsRow(theme(), QStringLiteral("photo.on.rectangle"), tr("系统截图监听目录")));
    folder.setObjectName(QStringLiteral("monitoredDirectory"));
    const auto showFolder = [&settings, row = &folder] {
        row->setPath(readablePath(settings.monitoredDirectory()));
    };
    showFolder();
    connect(&settings, &AppSettings::monitoredDirectoryChanged, &folder, showFolder);
    auto* choose = new PushButton(theme(), PushButton::Role::Ordinary);
    choose->setText(tr("选择..."));
    choose->setAccessibleDescription(folder.label());
    choose->setAccessibleName(choose->text());
    folder.addControl(*choose);
    connect(choose, &QAbstractButton::clicked, this, &StorageSettingsTab::chooseFolder);

    SettingsRow& library =
        card.add(new SettingsRow(theme(), QStringLiteral("folder"), tr("Tessary 图片资料库")));
    auto* reveal = new PushButton(theme(), PushButton::Role::Ordinary);
    reveal->setText(tr("在访达中显示"));
    reveal->setAccessibleName(reveal->text());
    reveal->setAccessibleDescription(library.label());
    library.addControl(*reveal);
    connect(reveal, &QAbstractButton::clicked, &m_runtime, &AppRuntime::revealLibrary);
    addUsage(card);
}

void StorageSettingsTab::addUsage(SettingsCard& card)
{
    SettingsRow& usage = card.add(new SettingsRow(theme(), QStringLiteral("internaldrive"), tr("当前占用")));
    auto* amount = new ThemedLabel(theme(), kValue);
    amount->setObjectName(QStringLiteral("storageBytes"));
    const auto showAmount = [this, amount] {
        const QString text = byteCountText(m_runtime.storageBytes());
        amount->setText(text);
        amount->setAccessibleName(tr("当前占用 %1").arg(text));
    };
    showAmount();
    connect(&m_runtime, &AppRuntime::storageBytesChanged, amount, showAmount);
    usage.addControl(*amount, SettingsRow::Bleed::None);
    auto* refresh = new SymbolButton(theme(), QStringLiteral("arrow.clockwise"));
    refresh->setToolTip(tr("重新计算"));
    refresh->setAccessibleName(tr("重新计算当前占用"));
    usage.addControl(*refresh, SettingsRow::Bleed::Frame);
    connect(refresh, &QAbstractButton::clicked, &m_runtime, &AppRuntime::refreshStorageUsage);
}

void StorageSettingsTab::addLimits()
{
    SettingsCard& card = addGroup();
    SettingsRow& retention =
        card.add(new SettingsRow(theme(), QStringLiteral("trash"), tr("回收站保留时间")));
    auto* days = new Picker(theme(), {7, 30, kYear}, [](int value) {
        return value == kYear ? tr("1 年") : QString::number(value) + tr(" 天");
    });
    bind(*days, {&AppSettings::trashRetentionDays, &AppSettings::trashRetentionDaysChanged,
                 &AppSettings::setTrashRetentionDays});
    retention.addControl(*days);

    SettingsRow& limit =
        card.add(new SettingsRow(theme(), QStringLiteral("photo.stack"), tr("最大存储空间")));
    auto* gigabytes = new Picker(theme(), {0, 1, 5, 10, 50}, [](int value) {
        return value == 0 ? tr("不限制") : QString::number(value) + QStringLiteral(" GB");
    });
    bind(*gigabytes,
         {&AppSettings::maxStorageGB, &AppSettings::maxStorageGBChanged, &AppSettings::setMaxStorageGB});
    limit.addControl(*gigabytes);

    SettingsRow& cleanup = card.add(
        new SettingsRow(theme(), QStringLiteral("clock.arrow.circlepath"), tr("超过上限时自动清理")));
    cleanup.setNote(tr("自动清理默认关闭；开启后仅永久移除最旧的、未收藏且未置顶的图片记录。"));
    addSwitch(cleanup, m_runtime.settings(),
              {&AppSettings::automaticStorageCleanup, &AppSettings::automaticStorageCleanupChanged,
               &AppSettings::setAutomaticStorageCleanup},
              [this] { enforce(); });
}

void StorageSettingsTab::bind(Picker& picker, const Amount& amount)
{
    AppSettings& settings = m_runtime.settings();
    const auto follow = [&settings, &picker, value = amount.value] { picker.setValue((settings.*value)()); };
    follow();
    connect(&settings, amount.changed, &picker, follow);
    connect(&picker, &Picker::picked, this, [this, &settings, amount](int value) {
        if ((settings.*amount.value)() == value)
            return;
        (settings.*amount.assign)(value);
        enforce();
    });
}

void StorageSettingsTab::chooseFolder()
{
    const QString start = m_runtime.settings().monitoredDirectory();
    tessary::chooseFolder(theme(), *this, tr("选择系统截图监听目录"), start, [this](const QString& path) {
        m_runtime.settings().setMonitoredDirectory(path);
        m_runtime.restartMonitoring();
    });
}

void StorageSettingsTab::enforce()
{
    m_runtime.perform(m_runtime.enforceStorageLimit());
}

} // namespace tessary
