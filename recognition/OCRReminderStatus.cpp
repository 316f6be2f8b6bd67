#include "recognition/OCRReminderStatus.h"

#include <QCoreApplication>

namespace tessary {
namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(OCRReminderStatus)
};

struct StatusText {
    QString operator()(const OCRReminderStatus::Ready&) const { return Words::tr("识别到待办，可手动添加"); }
    QString operator()(const OCRReminderStatus::Created&) const { return Words::tr("已成功添加待办事项"); }
    QString operator()(const OCRReminderStatus::Failed& failed) const
    {
        return Words::tr("添加失败：") + failed.message;
    }
    QString operator()(const OCRReminderStatus::NotATask&) const
    {
        return Words::tr("Apple Vision 本地离线识别");
    }
};

} // namespace

QString OCRReminderStatus::text() const
{
    return std::visit(StatusText{}, value);
}

} // namespace tessary
