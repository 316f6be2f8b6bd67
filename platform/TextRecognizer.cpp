#include "platform/TextRecognizer.h"

#include <QCoreApplication>

namespace tessary {

QString TextRecognitionError::localizedDescription() const
{
    switch (m_case) {
    case Case::ModelsMissing:
        return QCoreApplication::translate("TextRecognitionError", "缺少文字识别模型，请安装 %1")
            .arg(m_detail);
    case Case::PictureTooLarge:
        return QCoreApplication::translate("TextRecognitionError", "图片尺寸过大，无法识别。");
    case Case::WorkerTimedOut:
        return QCoreApplication::translate("TextRecognitionError", "文字识别超时。");
    case Case::WorkerFailed:
        break;
    }
    return QCoreApplication::translate("TextRecognitionError", "文字识别进程意外退出。");
}

} // namespace tessary
