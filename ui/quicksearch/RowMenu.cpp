#include "ui/quicksearch/RowMenu.h"

namespace tessary {

RowMenu::RowMenu(const Theme& theme, bool isTranslucent, const ScreenshotRecord& record, QWidget* parent)
    : Menu(theme, isTranslucent, parent)
{
    const auto item = [this](const char* symbol, const QString& text, void (RowMenu::*chosen)()) {
        connect(add(QLatin1String(symbol), text), &QAction::triggered, this, chosen);
    };
    if (record.contentType == ClipboardContentType::Image)
        item("doc.on.doc", tr("复制图片"), &RowMenu::copyRequested);
    item("doc.on.clipboard", tr("复制并粘贴"), &RowMenu::pasteRequested);
    item("photo", tr("预览"), &RowMenu::previewRequested);
    item("folder", tr("在 Finder 中显示"), &RowMenu::revealRequested);
    addSeparator();
    item(record.isFavorite ? "star.fill" : "star", record.isFavorite ? tr("取消收藏") : tr("收藏"),
         &RowMenu::favoriteRequested);
    item(record.isPinned ? "pin.fill" : "pin", record.isPinned ? tr("取消置顶") : tr("置顶"),
         &RowMenu::pinRequested);
    addSeparator();
    item("trash", tr("移到回收站"), &RowMenu::deletionRequested);
}

} // namespace tessary
