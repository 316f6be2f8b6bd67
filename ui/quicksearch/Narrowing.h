#pragma once

#include "base/Calendar.h"
#include "search/ScreenshotScope.h"

#include <QList>
#include <QString>

namespace tessary {

/// One of the things that a list is narrowed to besides its keywords.
struct Narrowing {
    QString text;        ///< What the person reads.
    QString operatorKey; ///< Which operators of the query say it; empty for the scope.

    friend bool operator==(const Narrowing&, const Narrowing&) = default;
};

/// Those of a typed query and a scope, in a fixed order.
[[nodiscard]] QList<Narrowing> narrowings(const QString& query, ScreenshotScope scope,
                                          const Calendar& calendar);

} // namespace tessary
