#include "platform/ImageCodec.h"

#include <QCoreApplication>

namespace tessary {

QString ImageError::localizedDescription() const
{
    switch (m_case) {
    case Case::NotAnImage:
        return QCoreApplication::translate("ImageError", "图片已损坏或格式不受支持。");
    case Case::TooLarge:
        return QCoreApplication::translate("ImageError", "图片尺寸过大，无法处理。");
    case Case::WorkerFailed:
        return QCoreApplication::translate("ImageError", "图片处理进程意外退出。");
    case Case::WorkerTimedOut:
        return QCoreApplication::translate("ImageError", "图片处理超时。");
    case Case::WriteFailed:
        break;
    }
    return QCoreApplication::translate("ImageError", "无法写入处理后的图片。");
}

} // namespace tessary
