#include "platform/x11/X11Error.h"

#include <QCoreApplication>

namespace tessary {

QString X11Error::localizedDescription() const
{
    switch (m_case) {
    case Case::NoDisplay:
        return QCoreApplication::translate("X11Error", "无法连接图形显示服务");
    case Case::MissingExtension:
        return QCoreApplication::translate("X11Error", "图形显示服务缺少所需的扩展");
    }
    Q_UNREACHABLE();
}

} // namespace tessary
