#include "search/LibraryChange.h"

#include <QString>

namespace tessary {

QString rawValue(LibraryChange::Kind kind)
{
    switch (kind) {
    case LibraryChange::Kind::Opened:
        return QStringLiteral("opened");
    case LibraryChange::Kind::Added:
        return QStringLiteral("added");
    case LibraryChange::Kind::Repeated:
        return QStringLiteral("repeated");
    case LibraryChange::Kind::Used:
        return QStringLiteral("used");
    case LibraryChange::Kind::Edited:
        return QStringLiteral("edited");
    case LibraryChange::Kind::Trashed:
        return QStringLiteral("trashed");
    case LibraryChange::Kind::Removed:
        return QStringLiteral("removed");
    case LibraryChange::Kind::Cleared:
        return QStringLiteral("cleared");
    }
    return {};
}

} // namespace tessary
