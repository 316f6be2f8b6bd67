#include "platform/ScreenCapture.h"

#include <QCoreApplication>

namespace tessary {

QString ScreenCaptureError::localizedDescription() const
{
    switch (m_case) {
    case Case::NotConnected:
        return QCoreApplication::translate("ScreenCaptureError", "无法读取屏幕内容。");
    case Case::UnknownFormat:
        return QCoreApplication::translate("ScreenCaptureError", "不支持此显示器的像素格式。");
    case Case::ScreensInUse:
        break;
    }
    return QCoreApplication::translate("ScreenCaptureError", "另一个程序正在占用鼠标或键盘，请稍后再试。");
}

} // namespace tessary
