#include "search/ScreenshotScope.h"

#include <QCoreApplication>

namespace tessary {
namespace {

struct Description {
    const char* rawValue;
    const char* title;
    const char* systemImage;
};

constexpr std::array<Description, kScreenshotScopes.size()> kDescriptions{{
    {"all", QT_TRANSLATE_NOOP("ScreenshotScope", "所有剪贴板"), "photo.on.rectangle.angled"},
    {"recentlyUsed", QT_TRANSLATE_NOOP("ScreenshotScope", "最近使用"), "clock.arrow.circlepath"},
    {"today", QT_TRANSLATE_NOOP("ScreenshotScope", "今天"), "calendar"},
    {"last7Days", QT_TRANSLATE_NOOP("ScreenshotScope", "最近 7 天"), "clock"},
    {"last30Days", QT_TRANSLATE_NOOP("ScreenshotScope", "最近 30 天"), "clock"},
    {"favorites", QT_TRANSLATE_NOOP("ScreenshotScope", "收藏"), "star"},
    {"landscape", QT_TRANSLATE_NOOP("ScreenshotScope", "横图"), "rectangle"},
    {"portrait", QT_TRANSLATE_NOOP("ScreenshotScope", "竖图"), "rectangle.portrait"},
    {"largeImages", QT_TRANSLATE_NOOP("ScreenshotScope", "大尺寸图片"), "arrow.up.left.and.arrow.down.right"},
    {"images", QT_TRANSLATE_NOOP("ScreenshotScope", "图片"), "photo.stack"},
    {"textItems", QT_TRANSLATE_NOOP("ScreenshotScope", "文字"), "text.alignleft"},
    {"trash", QT_TRANSLATE_NOOP("ScreenshotScope", "回收站"), "trash"},
}};

const Description& description(ScreenshotScope scope)
{
    return kDescriptions.at(static_cast<std::size_t>(scope));
}

} // namespace

QString rawValue(ScreenshotScope scope)
{
    return QString::fromLatin1(description(scope).rawValue);
}

QString title(ScreenshotScope scope)
{
    return QCoreApplication::translate("ScreenshotScope", description(scope).title);
}

QString systemImage(ScreenshotScope scope)
{
    return QString::fromLatin1(description(scope).systemImage);
}

} // namespace tessary
