#pragma once

#include "tests/unit/platform/linux/WriteFile.h"

namespace tessary::testing {

/// A program at that path that does no more than write its arguments, each with a bar behind it, to the
/// notes.
inline void installNotingProgram(const QString& path, const QString& notes)
{
    const QByteArray file = notes.toUtf8();
    writeFile(path, "#!/bin/sh\nprintf '%s|' \"$@\" >'" + file + ".new'\n/bin/mv '" + file + ".new' '" +
                        file + "'\n");
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner));
}

} // namespace tessary::testing
