#include "platform/ReminderStore.h"

#include <QCoreApplication>

namespace tessary {

QString ReminderStoreError::localizedDescription() const
{
    switch (m_case) {
    case Case::Unavailable:
        return QCoreApplication::translate("ReminderStoreError", "提醒事项服务不可用。");
    case Case::TimedOut:
        return QCoreApplication::translate("ReminderStoreError", "提醒事项服务没有及时响应。");
    case Case::WriteFailed:
        break;
    }
    return QCoreApplication::translate("ReminderStoreError", "无法保存提醒事项。");
}

} // namespace tessary
