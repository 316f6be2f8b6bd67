#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace tessary::testing {

/// Writes a file, with the folders above it.
inline void writeFile(const QString& path, const QByteArray& bytes)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

inline QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace tessary::testing
