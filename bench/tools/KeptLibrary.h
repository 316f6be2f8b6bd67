#pragma once

#include <QtGlobal>

#include <map>
#include <memory>

namespace tessary::bench {

/// The library with that many items, made when it is first asked for and kept for the measurements after.
template <typename Library>
Library& keptLibrary(qint64 items)
{
    static std::map<qint64, std::unique_ptr<Library>> kept;
    std::unique_ptr<Library>& library = kept[items];
    if (!library)
        library = std::make_unique<Library>(items);
    return *library;
}

} // namespace tessary::bench
