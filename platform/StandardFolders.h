#pragma once

#include <QString>

namespace tessary {

/// Where the session keeps things.
class StandardFolders {
public:
    virtual ~StandardFolders() = default;
    /// The folder for programs' own data; throws FileError when the person has no usable home.
    [[nodiscard]] virtual QString applicationSupport() const = 0;
    /// The person's desktop folder; empty when there is none.
    [[nodiscard]] virtual QString desktop() const = 0;
};

} // namespace tessary
