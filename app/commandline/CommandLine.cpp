#include "app/commandline/CommandLine.h"

#include <getopt.h>

#include <vector>

namespace tessary {
namespace {

constexpr int kLongOption = 1;

CommandLine misuse(const Verb* verb, const QString& complaint)
{
    CommandLine line;
    line.request = CommandLine::Request::Misuse;
    line.verb = verb;
    const QString about = verb != nullptr ? QLatin1String(verb->word) + QStringLiteral(": ") : QString();
    line.complaint = QStringLiteral("tessary: ") + about + complaint;
    return line;
}

CommandLine request(CommandLine::Request what, const Verb* verb = nullptr)
{
    CommandLine line;
    line.request = what;
    line.verb = verb;
    return line;
}

/// The words of one verb, taken apart with getopt, whose state is the process's.
class VerbArguments {
public:
    VerbArguments(const Verb& verb, QByteArrayList words) : m_verb(verb), m_words(std::move(words))
    {
        for (QByteArray& word : m_words)
            m_argv.push_back(word.data());
        m_argv.push_back(nullptr);
        for (const VerbOption* declared : verb.options) {
            if (declared == nullptr)
                break;
            const int value = declared->value != nullptr ? required_argument : no_argument;
            m_options.push_back({declared->name, value, nullptr, kLongOption});
        }
        m_options.push_back({"help", no_argument, nullptr, 'h'});
        m_options.push_back({nullptr, 0, nullptr, 0});
    }

    [[nodiscard]] CommandLine parsed()
    {
        const int count = static_cast<int>(m_words.size());
        CommandLine line = request(CommandLine::Request::Perform, &m_verb);
        ::optind = 0;
        ::opterr = 0;
        for (;;) {
            int index = 0;
            const int found = ::getopt_long(count, m_argv.data(), ":h", m_options.data(), &index);
            if (found == -1)
                break;
            if (found == 'h')
                return request(CommandLine::Request::ShowHelp, &m_verb);
            if (found != kLongOption)
                return misuse(&m_verb, complaint(found));
            line.options.insert(m_options.at(static_cast<size_t>(index)).name, ::optarg);
        }
        for (int i = ::optind; i < count; ++i)
            line.operands.append(m_argv.at(static_cast<size_t>(i)));
        return line;
    }

private:
    [[nodiscard]] QString complaint(int found) const
    {
        const QString word = QString::fromUtf8(m_argv.at(static_cast<size_t>(::optind) - 1));
        if (found == ':')
            return QStringLiteral("the option %1 takes a value").arg(word);
        return QStringLiteral("unknown option: %1").arg(word);
    }

    const Verb& m_verb;
    QByteArrayList m_words; // the verb's own first
    std::vector<char*> m_argv;
    std::vector<option> m_options;
};

CommandLine withoutVerb(const QByteArrayList& arguments)
{
    const QByteArray& word = arguments.first();
    if (word == "--version" || word == "-v")
        return request(CommandLine::Request::ShowVersion);
    if (word == "--help" || word == "-h")
        return request(CommandLine::Request::ShowHelp);
    if (word == "--background" && arguments.size() == 1)
        return request(CommandLine::Request::RunUnnoticed);
    const QString what =
        word.startsWith('-') ? QStringLiteral("unknown option") : QStringLiteral("unknown verb");
    return misuse(nullptr, what + QStringLiteral(": ") + QString::fromUtf8(word));
}

} // namespace

CommandLine CommandLine::parse(const QByteArrayList& arguments)
{
    if (arguments.isEmpty())
        return {};
    const Verb* const verb = verbNamed(arguments.first());
    if (verb == nullptr)
        return withoutVerb(arguments);
    CommandLine line = VerbArguments(*verb, arguments).parsed();
    if (line.request != Request::Perform)
        return line;
    if (line.operands.size() < verb->fewest)
        return misuse(verb, QStringLiteral("expected: tessary %1 %2")
                                .arg(QLatin1String(verb->word), QLatin1String(verb->operands)));
    if (verb->most != Verb::kAny && line.operands.size() > verb->most)
        return misuse(verb,
                      QStringLiteral("too much: %1").arg(QString::fromUtf8(line.operands.at(verb->most))));
    return line;
}

QString CommandLine::helpText()
{
    QString verbs;
    for (const Verb& verb : allVerbs()) {
        const QString usage = QLatin1String(verb.word) + QLatin1Char(' ') + QLatin1String(verb.operands);
        verbs +=
            QStringLiteral("  ") + usage.leftJustified(19) + QLatin1String(verb.summary) + QLatin1Char('\n');
    }
    return QStringLiteral(
               "Usage: tessary [OPTION]\n"
               "       tessary VERB [ARGUMENT...]\n"
               "\n"
               "Keeps a private, local library of what you copy and of your screenshots.\n"
               "Without a verb Tessary starts, or shows the panel of the one that runs. Verbs are\n"
               "carried out by the one that runs; where none does, it is started.\n"
               "\n") +
           verbs +
           QStringLiteral("\n"
                          "  --background       start, or leave the one that runs alone\n"
                          "  -h, --help         show this text, or with a verb what it does, and exit\n"
                          "  -v, --version      show the version and exit\n"
                          "\n"
                          "Exit status: 0 done, 1 failed, 2 wrong use, 3 no such item.\n"
                          "\n"
                          "The library is kept in $XDG_DATA_HOME/Tessary (~/.local/share/Tessary),\n"
                          "the settings in $XDG_CONFIG_HOME/Tessary (~/.config/Tessary).\n");
}

QString CommandLine::versionText()
{
    return QStringLiteral("tessary " TESSARY_VERSION "\n");
}

} // namespace tessary
