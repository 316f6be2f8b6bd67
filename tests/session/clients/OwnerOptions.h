#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tessary::testing {

/// What a clipboard owner of the tests offers, and how it misbehaves while it serves that.
struct OwnerOptions {
    std::string selection = "CLIPBOARD";
    std::vector<std::pair<std::string, std::string>> offers; ///< Target and its bytes, in this order.
    std::optional<std::chrono::milliseconds> quitAfter;      ///< Ends this long after taking the selection.
    std::optional<std::uint32_t> announcedSize;              ///< Always incremental, with this size claimed.
    std::optional<std::size_t> dieAfterPieces;               ///< Ends abruptly after so many pieces.
    std::optional<std::size_t> stallAfterPieces;             ///< Sends no further piece after so many.
    bool stopsItself = false;      ///< Stops, as with SIGSTOP, as soon as it has the selection.
    std::size_t pieceSize = 65536; ///< Bytes in one piece of an incremental transfer.
    int seriesLength = 1;          ///< Takes the selection so many times in all.
    std::chrono::milliseconds seriesInterval{500}; ///< Between two of them.
    std::string seriesPrefix;                      ///< With a series the text is this and a number.
};

/// @throws std::invalid_argument for arguments that make no sense.
[[nodiscard]] OwnerOptions parseOwnerOptions(const std::vector<std::string>& arguments);

} // namespace tessary::testing
