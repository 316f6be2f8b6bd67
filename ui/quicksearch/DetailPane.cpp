#include "ui/quicksearch/DetailPane.h"

#include "search/ScreenshotSearchViewModel.h"
#include "ui/kit/EmptyState.h"
#include "ui/kit/Hairline.h"
#include "ui/quicksearch/FactsPanel.h"
#include "ui/quicksearch/TextPage.h"

#include <QLocale>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace tessary {

DetailPane::DetailPane(const Theme& theme, TileImages& tiles, PicturePreview::Loader loader, QWidget* parent)
    : QWidget(parent),
      m_empty(new EmptyState(theme)),
      m_text(new TextPage(theme)),
      m_picture(new PicturePreview(theme, std::move(loader))),
      m_facts(new FactsPanel(theme, tiles)),
      m_preview(new QStackedWidget),
      m_line(new Hairline(theme, Qt::Horizontal))
{
    m_empty->set(QStringLiteral("doc.on.clipboard"), {}, tr("选择一条记录查看详情"));
    m_preview->addWidget(m_empty);
    m_preview->addWidget(m_text);
    m_preview->addWidget(m_picture);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_preview, 1);
    layout->addWidget(m_line);
    layout->addWidget(m_facts);
    set(std::nullopt);
}

void DetailPane::set(const std::optional<ScreenshotRecord>& record)
{
    m_facts->setVisible(record.has_value());
    m_line->setVisible(record.has_value());
    if (!record) {
        m_preview->setCurrentWidget(m_empty);
        m_picture->clear();
        return;
    }
    // The list holds no more than the beginning, and a whole text has all the bytes of its item.
    const bool isCut = record->textContent.size() >= kListTextLimit &&
                       record->textContent.toUtf8().size() < record->fileSize;
    m_facts->set(itemFacts(*record, isCut, Calendar::current()),
                 record->sourceAppIconPath.value_or(QString()));
    if (record->contentType == ClipboardContentType::Text) {
        m_picture->clear();
        showText(*record, isCut);
    } else {
        m_preview->setCurrentWidget(m_picture);
        m_picture->setPicture(
            record->libraryPath, record->thumbnailPath.value_or(QString()),
            QSize(static_cast<int>(record->pixelWidth), static_cast<int>(record->pixelHeight)));
    }
}

void DetailPane::showText(const ScreenshotRecord& record, bool isCut)
{
    const QString note =
        isCut ? tr("仅预览前 %1 个字符，复制时为全文").arg(QLocale().toString(record.textContent.size()))
              : QString();
    m_text->setText(record.textContent, note);
    m_preview->setCurrentWidget(m_text);
}

void DetailPane::clear()
{
    m_picture->clear();
    m_text->setText({}, {});
}

} // namespace tessary
