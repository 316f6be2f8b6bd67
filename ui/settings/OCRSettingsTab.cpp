#include "ui/settings/OCRSettingsTab.h"

#include "app/AppRuntime.h"
#include "ui/kit/Theme.h"
#include "ui/kit/ThemedLabel.h"
#include "ui/settings/SettingsCard.h"
#include "ui/settings/SettingsRow.h"
#include "ui/settings/Tag.h"

#include <QHBoxLayout>

namespace tessary {
namespace {

constexpr int kTagGap = 4;
const ThemedLabel::Look kValue{Theme::kBodySize, QFont::Normal, &ThemeColours::secondaryText, 20};

/// A short name for a language; its tag when there is none.
QString languageName(const QString& tag)
{
    if (tag == QLatin1String("zh-Hans"))
        return OCRSettingsTab::tr("简中");
    if (tag == QLatin1String("zh-Hant"))
        return OCRSettingsTab::tr("繁中");
    if (tag.startsWith(QLatin1String("en")))
        return OCRSettingsTab::tr("英文");
    if (tag.startsWith(QLatin1String("ja")))
        return OCRSettingsTab::tr("日文");
    return tag;
}

} // namespace

OCRSettingsTab::OCRSettingsTab(const Theme& theme, AppRuntime& runtime, QWidget* parent)
    : SettingsPage(theme, parent),
      m_runtime(runtime)
{
    SettingsCard& card = addGroup();
    SettingsRow& languages =
        card.add(new SettingsRow(theme, QStringLiteral("text.alignleft"), tr("识别语言")));
    languages.setNote(tr("OCR 仅处理你通过快捷键主动框选的区域。剪贴板历史中的图片不会自动识别。"));
    languages.alignAtTop();
    languages.addControl(*languageTags(), SettingsRow::Bleed::None);

    SettingsRow& engine = card.add(new SettingsRow(theme, QStringLiteral("lock"), tr("处理方式")));
    engine.addControl(*new ThemedLabel(theme, kValue, tr("Apple Vision, 本地离线")),
                      SettingsRow::Bleed::None);

    SettingsRow& accurate =
        card.add(new SettingsRow(theme, QStringLiteral("checkmark.circle"), tr("使用精确识别")));
    addSwitch(accurate, runtime.settings(),
              {&AppSettings::accurateOCR, &AppSettings::accurateOCRChanged, &AppSettings::setAccurateOCR},
              [this] { m_runtime.updateOCRConfiguration(); });

    SettingsRow& reminders =
        card.add(new SettingsRow(theme, QStringLiteral("checklist"), tr("OCR 完成后自动添加待办")));
    addSwitch(reminders, runtime.settings(),
              {&AppSettings::autoCreateReminderAfterOCR, &AppSettings::autoCreateReminderAfterOCRChanged,
               &AppSettings::setAutoCreateReminderAfterOCR});
}

QWidget* OCRSettingsTab::languageTags() const
{
    auto* tags = new QWidget;
    auto* line = new QHBoxLayout(tags);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(kTagGap);
    for (const QString& language : m_runtime.settings().ocrLanguages())
        line->addWidget(new Tag(theme(), languageName(language)));
    return tags;
}

} // namespace tessary
