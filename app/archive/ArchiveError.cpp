#include "app/archive/ArchiveError.h"

#include <QCoreApplication>

namespace tessary {

QString ArchiveError::localizedDescription() const
{
    const auto sentence = [&](const char* text) {
        return QCoreApplication::translate("ArchiveError", text).arg(m_folder);
    };
    switch (m_case) {
    case Case::FolderNotEmpty:
        return sentence(QT_TRANSLATE_NOOP("ArchiveError", "文件夹“%1”不是空的，请选择新的或空的文件夹。"));
    case Case::NotAnExport:
        return sentence(QT_TRANSLATE_NOOP("ArchiveError", "文件夹“%1”中没有导出的资料库。"));
    case Case::Interrupted:
        break;
    }
    return sentence(QT_TRANSLATE_NOOP("ArchiveError", "“%1”的导出或恢复已中断。"));
}

} // namespace tessary
