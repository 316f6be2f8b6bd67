#include "recognition/RegionSelector.h"

#include <QCoreApplication>

namespace tessary {

QString RegionSelector::SelectionError::localizedDescription() const
{
    if (m_case == Case::NoScreen)
        return QCoreApplication::translate("RegionSelector", "找不到可用显示器");
    return QCoreApplication::translate("RegionSelector", "已取消识别");
}

} // namespace tessary
