#include "app/commandline/Verb.h"

#include <algorithm>

namespace tessary {
namespace {

constexpr VerbOption kScope{"scope", "SCOPE",
                            "all (the default), recentlyUsed, today, last7Days, last30Days, favorites,\n"
                            "landscape, portrait, largeImages, images, textItems or trash"};
constexpr VerbOption kSort{"sort", "ORDER",
                           "relevance (the default), newest, oldest, recentlyUsed or fileSize"};
constexpr VerbOption kLimit{"limit", "N", "at most N items; 100 without it"};
constexpr VerbOption kOffset{"offset", "N", "leave out the first N items"};
constexpr VerbOption kJsonList{"json", nullptr,
                               "print a JSON array of objects with every field of the items"};
constexpr VerbOption kJson{"json", nullptr, "print a JSON object"};
constexpr VerbOption kJsonItem{"json", nullptr, "print the item with every field as a JSON object instead"};
constexpr VerbOption kOutput{"output", "FILE", "write to FILE instead of standard output"};
constexpr VerbOption kFast{"fast", nullptr, "read fast rather than accurately"};
constexpr VerbOption kJsonText{"json", nullptr,
                               "print a JSON object with the text, the picture's size, and the lines with\n"
                               "their places and how certain they are"};
constexpr VerbOption kAll{"all", nullptr, "everything that is in the trash"};

using Name = Verb::Name;

constexpr std::array<Verb, 23> kVerbs{{
    {Name::Toggle, "toggle", "", 0, 0, "show the quick-search panel, or hide it", "", {}},
    {Name::Settings, "settings", "", 0, 0, "show the settings window", "", {}},
    {Name::Pause, "pause", "", 0, 0, "stop recording the clipboard and the screenshot folder", "", {}},
    {Name::Resume, "resume", "", 0, 0, "record again", "", {}},
    {Name::Status,
     "status",
     "",
     0,
     0,
     "say how Tessary is doing",
     "One line for each fact: its name, a tab, its value.",
     {&kJson}},
    {Name::Search,
     "search",
     "[QUERY]",
     0,
     Verb::kAny,
     "list the items that match what one would type",
     "QUERY is what one types into the panel: words, app:, tag:, before:, after:, is:. Several\n"
     "arguments are one query. Without one, everything is listed.\n"
     "One line for each item, with tabs between: id, local time of capture, image or text,\n"
     "application, title.",
     {&kScope, &kSort, &kLimit, &kOffset, &kJsonList}},
    {Name::Show,
     "show",
     "ID",
     1,
     1,
     "print an item's content",
     "A text is printed byte for byte. A picture's bytes go to FILE, or to standard output when\n"
     "that is no terminal.",
     {&kOutput, &kJsonItem}},
    {Name::Copy, "copy", "ID", 1, 1, "put an item on the clipboard", "", {}},
    {Name::Paste, "paste", "ID", 1, 1, "paste an item into the program that is in front", "", {}},
    {Name::Import,
     "import",
     "FILE...",
     1,
     Verb::kAny,
     "take picture files into the library",
     "As if they appeared in the screenshot folder, under any name. One line for each file: added\n"
     "or known, the item's id and the file, with tabs between.",
     {}},
    {Name::Tag,
     "tag",
     "ID [TAG...]",
     1,
     Verb::kAny,
     "give an item these tags instead of those it has",
     "Without a TAG the item has none afterwards.",
     {}},
    {Name::Note,
     "note",
     "ID TEXT...",
     2,
     Verb::kAny,
     "give an item this note instead of the one it has",
     "Several arguments are one text; an empty one removes the note.",
     {}},
    {Name::Favorite, "favorite", "ID...", 1, Verb::kAny, "mark items as favourites", "", {}},
    {Name::Unfavorite, "unfavorite", "ID...", 1, Verb::kAny, "take that mark away", "", {}},
    {Name::Pin, "pin", "ID...", 1, Verb::kAny, "pin items to the top of every list", "", {}},
    {Name::Unpin, "unpin", "ID...", 1, Verb::kAny, "unpin items", "", {}},
    {Name::Trash, "trash", "ID...", 1, Verb::kAny, "move items to the trash", "", {}},
    {Name::Export,
     "export",
     "FOLDER",
     1,
     1,
     "write the whole library into a folder",
     "FOLDER has to be new or empty. It gets items.jsonl, a JSON object with every field for each\n"
     "item, and the items' files in Originals, Thumbnails and App Icons.",
     {}},
    {Name::Restore,
     "restore",
     "FOLDER",
     1,
     1,
     "add the items of an exported library",
     "What the library holds already is passed over.",
     {}},
    {Name::Purge,
     "purge",
     "",
     0,
     0,
     "remove for good what has been in the trash for long enough",
     "That is for the number of days that the settings say.",
     {&kAll}},
    {Name::Usage,
     "usage",
     "",
     0,
     0,
     "say how much the library holds and what it takes on the disk",
     "One line for each fact: its name, a tab, its value. Sizes are in bytes.",
     {&kJson}},
    {Name::Watch,
     "watch",
     "",
     0,
     0,
     "print a line for each change of the library",
     "Local time, what happened (added, repeated, used, edited, trashed, removed, cleared), and the\n"
     "ids of the items where they are known, with tabs between; until interrupted.",
     {}},
    {Name::Recognize,
     "recognize",
     "[FILE]",
     0,
     1,
     "print the text in a region of the screen or in a picture",
     "Without a FILE, which may be PNG, JPEG, TIFF or HEIF, one drags a region of the screen. Nothing\n"
     "is put on the clipboard. Without --fast it is read as the settings say.",
     {&kFast, &kJsonText}},
}};

QString optionHelp(const QString& head, const QString& text)
{
    constexpr int kColumn = 19;
    QString lines = QStringLiteral("  ") + head;
    lines = lines.leftJustified(kColumn);
    return lines +
           QString(text).replace(QLatin1Char('\n'), QLatin1Char('\n') + QString(kColumn, QLatin1Char(' '))) +
           QLatin1Char('\n');
}

} // namespace

const std::array<Verb, 23>& allVerbs()
{
    return kVerbs;
}

const Verb* verbNamed(const QByteArray& word)
{
    const auto found =
        std::find_if(kVerbs.begin(), kVerbs.end(), [&](const Verb& verb) { return word == verb.word; });
    return found != kVerbs.end() ? &*found : nullptr;
}

QString helpText(const Verb& verb)
{
    const auto text = [](const char* utf8) { return QString::fromUtf8(utf8); };
    QString help = QStringLiteral("Usage: tessary ") + text(verb.word);
    if (verb.options.front() != nullptr)
        help += QStringLiteral(" [OPTION...]");
    if (*verb.operands != '\0')
        help += QLatin1Char(' ') + text(verb.operands);
    const QString summary = text(verb.summary);
    help += QStringLiteral("\n\n") + summary.left(1).toUpper() + summary.mid(1) + QStringLiteral(".\n");
    if (*verb.details != '\0')
        help += text(verb.details) + QLatin1Char('\n');
    help += QLatin1Char('\n');
    for (const VerbOption* option : verb.options) {
        if (option == nullptr)
            break;
        const QString value = option->value != nullptr ? QLatin1Char(' ') + text(option->value) : QString();
        help += optionHelp(QStringLiteral("--") + text(option->name) + value, text(option->help));
    }
    return help + optionHelp(QStringLiteral("-h, --help"), QStringLiteral("show this text and exit"));
}

} // namespace tessary
