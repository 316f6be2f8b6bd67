#include "store/StoreError.h"

#include <QCoreApplication>

namespace tessary {

QString StoreError::localizedDescription() const
{
    switch (m_case) {
    case Case::OpenDatabase:
        return QCoreApplication::translate("StoreError", "无法打开数据库：") + m_message;
    case Case::Execute:
        return QCoreApplication::translate("StoreError", "数据库操作失败：") + m_message;
    case Case::Prepare:
        break;
    }
    return QCoreApplication::translate("StoreError", "数据库查询失败：") + m_message;
}

QString PersistenceError::localizedDescription() const
{
    switch (m_case) {
    case Case::MissingEntity:
        return QCoreApplication::translate("PersistenceError", "Core Data 模型缺少截图实体");
    case Case::InvalidRecord:
        return QCoreApplication::translate("PersistenceError", "Core Data 中的截图记录无效");
    case Case::NewerVersion:
        break;
    }
    return QCoreApplication::translate("PersistenceError", "资料库由更新版本的 Tessary 创建，此版本无法打开");
}

} // namespace tessary
