#pragma once

#include <QString>

namespace tessary {

/// Whether this session can do something; if not, the reason for the person.
struct Support {
    bool available = true;
    QString reason; ///< Empty when available.
};

} // namespace tessary
