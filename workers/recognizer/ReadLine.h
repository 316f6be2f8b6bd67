#pragma once

#include <QRect>
#include <QString>

namespace tessary::recognizer {

/// A line with what it says.
struct ReadLine {
    QRect box;
    QString text;          ///< Never empty.
    double confidence = 0; ///< 0 to 1.

    friend bool operator==(const ReadLine&, const ReadLine&) = default;
};

} // namespace tessary::recognizer
