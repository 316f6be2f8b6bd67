#include "recognition/OCRReminderStatus.h"

#include <QCoreApplication>

namespace tessary {
namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("OCRReminderStatus", text);
}

struct StatusText {
    QString operator()(const OCRReminderStatus::Ready&) const { return translated("识别到待办，可手动添加"); }
    QString operator()(const OCRReminderStatus::Created&) const { return translated("已成功添加待办事项"); }
    QString operator()(const OCRReminderStatus::Failed& failed) const
    {
        return translated("添加失败：") + failed.message;
    }
    QString operator()(const OCRReminderStatus::NotATask&) const
    {
        return translated("Apple Vision 本地离线识别");
    }
};

} // namespace

QString OCRReminderStatus::text() const
{
    return std::visit(StatusText{}, value);
}

} // namespace tessary
