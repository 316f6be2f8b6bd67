#include "ui/preview/ItemExport.h"

#include "app/AppRuntime.h"
#include "ui/kit/Sheet.h"
#include "ui/preview/ExportName.h"
#include "ui/preview/PreviewSurroundings.h"

#include <QFileDialog>
#include <QStandardPaths>

namespace tessary {
namespace {

enum class Ending { Written, Taken, Failed };

struct Outcome {
    Ending ending = Ending::Failed;
    QString message;
};

QCoro::Task<Outcome> exported(AppRuntime& runtime, ScreenshotRecord record, QString path,
                              ItemExporter::IfTaken ifTaken)
{
    Outcome outcome;
    try {
        const bool isWritten = co_await runtime.exportItem(record, path, ifTaken);
        outcome.ending = isWritten ? Ending::Written : Ending::Taken;
    } catch (const std::exception& error) {
        outcome.message = ItemExport::tr("导出失败：") + localizedDescription(error);
    }
    if (!outcome.message.isEmpty())
        runtime.reportFailure(outcome.message);
    co_return outcome;
}

} // namespace

ItemExport::ItemExport(AppRuntime& runtime, PreviewSurroundings& surroundings, QWidget& window)
    : QObject(&window),
      m_runtime(runtime),
      m_surroundings(surroundings),
      m_window(window)
{
}

QString& ItemExport::folder() const
{
    const bool isText = m_record.contentType == ClipboardContentType::Text;
    return isText ? m_surroundings.textFolder : m_surroundings.pictureFolder;
}

void ItemExport::begin(const ScreenshotRecord& record)
{
    const bool isAsking = (m_dialog && m_dialog->isVisible()) || (m_sheet && m_sheet->isVisible());
    if (isAsking)
        return;
    m_record = record;
    const bool isText = record.contentType == ClipboardContentType::Text;
    const auto standard = isText ? QStandardPaths::DocumentsLocation : QStandardPaths::PicturesLocation;
    const QString start = folder().isEmpty() ? QStandardPaths::writableLocation(standard) : folder();
    m_dialog = new QFileDialog(&m_window, tr("导出"), start);
    m_dialog->setAcceptMode(QFileDialog::AcceptSave);
    m_dialog->setFileMode(QFileDialog::AnyFile);
    m_dialog->setOption(QFileDialog::DontConfirmOverwrite); // the dialog would wait in a loop of its own
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    m_dialog->selectFile(exportName(record));
    connect(m_dialog, &QFileDialog::fileSelected, this,
            [this](const QString& path) { write(path, ItemExporter::IfTaken::LeaveIt); });
    m_dialog->open();
}

void ItemExport::write(const QString& path, ItemExporter::IfTaken ifTaken)
{
    folder() = path.section(QLatin1Char('/'), 0, -2);
    QCoro::connect(exported(m_runtime, m_record, path, ifTaken), this, [this, path](const Outcome& outcome) {
        if (outcome.ending == Ending::Taken)
            askToReplace(path);
        else if (outcome.ending == Ending::Written)
            Q_EMIT done(path);
        else
            Q_EMIT failed(outcome.message);
    });
}

void ItemExport::askToReplace(const QString& path)
{
    Sheet::Question question;
    question.symbol = QStringLiteral("exclamationmark.triangle.fill");
    question.title = tr("要替换“%1”吗？").arg(path.section(QLatin1Char('/'), -1));
    question.text = tr("那里已有同名的文件，替换后其原有内容将丢失。");
    question.choices = {{tr("替换"), PushButton::Role::Destructive,
                         [this, path] { write(path, ItemExporter::IfTaken::ReplaceIt); }},
                        {tr("取消"), PushButton::Role::Default, {}}};
    question.escape = 1;
    m_sheet = Sheet::ask(m_surroundings.theme, m_window, question);
}

} // namespace tessary
