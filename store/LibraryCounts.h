#pragma once

#include <QtGlobal>

namespace tessary {

/// How many items the library has. Those in the trash are neither images nor texts here.
struct LibraryCounts {
    qint64 images = 0;
    qint64 texts = 0;
    qint64 inTrash = 0;

    friend bool operator==(const LibraryCounts&, const LibraryCounts&) = default;
};

} // namespace tessary
