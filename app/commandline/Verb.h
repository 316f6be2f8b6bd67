#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <optional>

namespace tessary {

/// An option of the command line. Plain constants, in UTF-8.
struct VerbOption {
    const char* name;  ///< Without dashes.
    const char* value; ///< What stands for its value in the help; null for an option without one.
    const char* help;
};

/// One of the words that the command line understands.
struct Verb {
    enum class Name {
        Toggle,
        Settings,
        Pause,
        Resume,
        Status,
        Search,
        Show,
        Copy,
        Paste,
        Import,
        Tag,
        Note,
        Favorite,
        Unfavorite,
        Pin,
        Unpin,
        Trash,
        Export,
        Restore,
        Purge,
        Usage,
        Watch,
        Recognize,
    };
    static constexpr int kAny = -1;
    static constexpr std::size_t kMostOptions = 5;

    Name name;
    const char* word;
    const char* operands;                                ///< As the help shows them.
    int fewest;                                          ///< How many operands it takes at least.
    int most;                                            ///< And at most; `kAny` when there is no limit.
    const char* summary;                                 ///< A line.
    const char* details;                                 ///< Further lines, or empty.
    std::array<const VerbOption*, kMostOptions> options; ///< Null behind the last.
};

/// Every verb, in the order of the help.
[[nodiscard]] const std::array<Verb, 23>& allVerbs();
/// @returns null for a word that is none.
[[nodiscard]] const Verb* verbNamed(const QByteArray& word);
/// What `--help` says of the verb.
[[nodiscard]] QString helpText(const Verb& verb);

} // namespace tessary
