#pragma once

#include <QUuid>

#include <optional>

namespace tessary {

/// What came of a file that was to be taken into the library.
struct FileImport {
    enum class Outcome {
        Added,       ///< It is a new item.
        Known,       ///< The library holds its content already.
        Excluded,    ///< The settings exclude its folder, or the program that was in front.
        NotAccepted, ///< It is no regular file with the extension of a picture.
    };

    Outcome outcome = Outcome::NotAccepted;
    std::optional<QUuid> id; ///< Of the item that is new or holds the content.
};

} // namespace tessary
