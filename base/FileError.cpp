#include "base/FileError.h"

#include <QCoreApplication>

#include <cerrno>

namespace tessary {

FileError FileError::fromErrno(int code, const QString& path, Operation operation)
{
    const bool reading = operation == Operation::Read;
    switch (code) {
    case ENOENT:
    case ENOTDIR:
        return {reading ? Case::ReadNoSuchFile : Case::WriteUnknown, path};
    case EACCES:
    case EPERM:
        return {reading ? Case::ReadNoPermission : Case::WriteNoPermission, path};
    case EROFS:
        return {Case::WriteVolumeReadOnly, path};
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return {Case::WriteOutOfSpace, path};
    default:
        return {reading ? Case::ReadUnknown : Case::WriteUnknown, path};
    }
}

QString FileError::localizedDescription() const
{
    const auto sentence = [&](const char* text) {
        return QCoreApplication::translate("FileError", text).arg(m_path);
    };
    switch (m_case) {
    case Case::ReadNoSuchFile:
        return sentence(QT_TRANSLATE_NOOP("FileError", "文件“%1”不存在。"));
    case Case::ReadNoPermission:
        return sentence(QT_TRANSLATE_NOOP("FileError", "没有权限读取“%1”。"));
    case Case::ReadCorruptFile:
        return sentence(QT_TRANSLATE_NOOP("FileError", "文件“%1”已损坏或不是可读取的图片。"));
    case Case::ReadUnknown:
        return sentence(QT_TRANSLATE_NOOP("FileError", "无法读取“%1”。"));
    case Case::WriteOutOfSpace:
        return sentence(QT_TRANSLATE_NOOP("FileError", "磁盘空间不足，无法写入“%1”。"));
    case Case::WriteNoPermission:
        return sentence(QT_TRANSLATE_NOOP("FileError", "没有权限写入“%1”。"));
    case Case::WriteVolumeReadOnly:
        return sentence(QT_TRANSLATE_NOOP("FileError", "磁盘为只读，无法写入“%1”。"));
    case Case::WriteUnknown:
        break;
    }
    return sentence(QT_TRANSLATE_NOOP("FileError", "无法写入“%1”。"));
}

} // namespace tessary
