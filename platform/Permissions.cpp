#include "platform/Permissions.h"

#include <QCoreApplication>

namespace tessary {

QString PermissionError::localizedDescription() const
{
    if (m_case == Case::NoTaskService)
        return QCoreApplication::translate("PermissionError", "此桌面没有可用的任务服务。");
    return QCoreApplication::translate("PermissionError", "任务服务没有响应。");
}

} // namespace tessary
