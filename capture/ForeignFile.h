#pragma once

#include "base/ExpendableLane.h"

namespace tessary {

/// A file outside of the library, whose file system may hang.
struct ForeignFile {
    QByteArray path;                      ///< Absolute, as the file system has it, any bytes.
    std::shared_ptr<ExpendableLane> lane; ///< Where it is read. Whatever hangs there holds up the rest.
    std::stop_token giveUp;               ///< Once stopped, nobody waits for it any more.
};

} // namespace tessary
