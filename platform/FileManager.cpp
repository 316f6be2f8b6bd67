#include "platform/FileManager.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace tessary {

QString FileManagerError::localizedDescription() const
{
    if (m_case == Case::NoFileManager)
        return QCoreApplication::translate("FileManager", "没有找到可以显示文件的文件管理器。");
    return QCoreApplication::translate("FileManager", "找不到文件“%1”，它可能已被移动或删除。")
        .arg(QFileInfo(m_path).fileName());
}

} // namespace tessary
