#pragma once

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tessary::testing {

/// A folder of its own for one test, gone afterwards.
class TemporaryFolder {
public:
    [[nodiscard]] QString path() const { return m_folder.path(); }
    [[nodiscard]] QString file(const QString& name) const { return m_folder.filePath(name); }

private:
    QTemporaryDir m_folder;
};

} // namespace tessary::testing
