#include "app/commandline/VerbRunner.h"

#include "app/commandline/ChangeWatcher.h"
#include "app/commandline/HandedInFile.h"
#include "app/commandline/ItemLines.h"
#include "app/commandline/SearchOptions.h"
#include "base/FileDescriptor.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessary {
namespace {

constexpr qsizetype kImportsAtOnce = 16; // each waits until its file has stopped growing

void print(const QByteArray& text)
{
    std::fwrite(text.constData(), 1, static_cast<size_t>(text.size()), stdout);
}

void complain(const QString& sentence)
{
    std::fprintf(stderr, "tessary: %s\n", qUtf8Printable(ItemLines::flat(sentence)));
}

/// What a verb on many things ends with: a failure outweighs something that was not found.
ExitStatus worse(ExitStatus one, ExitStatus other)
{
    if (one == ExitStatus::Failed || other == ExitStatus::Failed)
        return ExitStatus::Failed;
    return std::max(one, other);
}

QString text(const QByteArray& operand)
{
    return QString::fromUtf8(operand);
}

QString joined(const QByteArrayList& words)
{
    return text(words.join(' '));
}

HandedInFile handedIn(const QVariantList& answer, qsizetype index)
{
    return HandedInFile(answer.value(index).value<QDBusUnixFileDescriptor>());
}

/// @throws CommandError for a name that the running program could not be told.
QString absoluteFolder(const QByteArray& operand)
{
    if (QString::fromUtf8(operand).toUtf8() != operand)
        throw CommandError(ExitStatus::Failed, QStringLiteral("the folder's name is not valid UTF-8"));
    return QDir::cleanPath(QDir::current().absoluteFilePath(text(operand)));
}

QByteArray absoluteFile(const QByteArray& operand)
{
    if (operand.startsWith('/'))
        return operand;
    char folder[PATH_MAX];
    if (::getcwd(folder, sizeof folder) == nullptr)
        throw CommandError(ExitStatus::Failed, QStringLiteral("the current folder is gone"));
    return QByteArray(folder) + '/' + operand;
}

/// @throws CommandError.
QDBusUnixFileDescriptor openPicture(const QByteArray& operand)
{
    // Not to be kept waiting by a named pipe; the descriptor handed over is a copy.
    const FileDescriptor file(::open(operand.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (file.get() < 0)
        throw CommandError(ExitStatus::Failed, QString::fromLocal8Bit(operand) + QStringLiteral(": ") +
                                                   QString::fromLocal8Bit(std::strerror(errno)));
    return QDBusUnixFileDescriptor(file.get());
}

qint64 number(const QVariantMap& facts, const char* name)
{
    return facts.value(QLatin1String(name)).toLongLong();
}

} // namespace

ExitStatus VerbRunner::perform(const CommandLine& line)
{
    using Name = Verb::Name;
    const auto done = [&](const QString& method, const QVariantList& arguments = {}) {
        m_client.call(method, arguments);
        return ExitStatus::Done;
    };
    switch (line.verb->name) {
    case Name::Toggle:
        return done(QStringLiteral("TogglePanel"));
    case Name::Settings:
        return done(QStringLiteral("ShowSettings"));
    case Name::Pause:
        return done(QStringLiteral("Pause"));
    case Name::Resume:
        return done(QStringLiteral("Resume"));
    case Name::Status:
        return facts(QStringLiteral("Status"), line);
    case Name::Search:
        return search(line);
    case Name::Show:
        return show(line);
    case Name::Copy:
        return done(QStringLiteral("Copy"), {text(line.operands.first())});
    case Name::Paste:
        return done(QStringLiteral("Paste"), {text(line.operands.first())});
    case Name::Import:
        return importFiles(line);
    case Name::Tag: {
        QStringList tags;
        for (const QByteArray& tag : line.operands.mid(1))
            tags.append(text(tag));
        return done(QStringLiteral("SetTags"), {text(line.operands.first()), tags});
    }
    case Name::Note:
        return done(QStringLiteral("SetNote"), {text(line.operands.first()), joined(line.operands.mid(1))});
    case Name::Favorite:
        return forEach(line.operands, QStringLiteral("SetFavorite"), {true});
    case Name::Unfavorite:
        return forEach(line.operands, QStringLiteral("SetFavorite"), {false});
    case Name::Pin:
        return forEach(line.operands, QStringLiteral("SetPinned"), {true});
    case Name::Unpin:
        return forEach(line.operands, QStringLiteral("SetPinned"), {false});
    case Name::Trash:
        return forEach(line.operands, QStringLiteral("MoveToTrash"), {});
    case Name::Export:
        return exportTo(line.operands.first());
    case Name::Restore:
        return restoreFrom(line.operands.first());
    case Name::Purge:
        return purge(line.options.contains("all"));
    case Name::Usage:
        return facts(QStringLiteral("Usage"), line);
    case Name::Watch:
        return watch();
    case Name::Recognize:
        return recognize(line);
    }
    return ExitStatus::WrongUse;
}

ExitStatus VerbRunner::forEach(const QByteArrayList& ids, const QString& method, const QVariantList& further)
{
    ExitStatus status = ExitStatus::Done;
    m_client.ensureRunning();
    for (const QByteArray& id : ids) {
        try {
            m_client.call(method, QVariantList{text(id)} + further);
        } catch (const CommandError& error) {
            complain(error.localizedDescription());
            status = worse(status, error.status());
        }
    }
    return status;
}

ExitStatus VerbRunner::facts(const QString& method, const CommandLine& line)
{
    const QVariantMap facts =
        qdbus_cast<QVariantMap>(m_client.call(method, {}, BusClient::Patience::Endless).value(0));
    print(line.options.contains("json") ? ItemLines::json(facts) : ItemLines::facts(facts));
    return ExitStatus::Done;
}

ExitStatus VerbRunner::search(const CommandLine& line)
{
    const bool asJson = line.options.contains("json");
    SearchOptions options = SearchOptions::from(line.options);
    if (!asJson)
        options.cutTexts();
    const char* separator = "[\n";
    for (bool isMore = options.remaining() > 0; isMore;) {
        const QVariantList answer =
            m_client.call(QStringLiteral("Search"), {joined(line.operands), options.asked()});
        const QByteArray items = handedIn(answer, 0).bytes();
        for (const QByteArray& item : items.split('\n')) {
            if (item.isEmpty())
                continue;
            print(asJson ? separator + item : ItemLines::line(QJsonDocument::fromJson(item).object()));
            separator = ",\n";
        }
        const int count = answer.value(1).toInt();
        options.advance(count);
        isMore = count > 0 && answer.value(2).toBool() && options.remaining() > 0;
    }
    if (asJson)
        print(*separator == '[' ? "[]\n" : "\n]\n");
    return ExitStatus::Done;
}

ExitStatus VerbRunner::show(const CommandLine& line)
{
    const QVariantList id{text(line.operands.first())};
    const bool asJson = line.options.contains("json");
    const QVariantList answer =
        m_client.call(asJson ? QStringLiteral("Record") : QStringLiteral("Content"), id);
    const HandedInFile content = handedIn(answer, asJson ? 0 : 1);
    if (line.options.contains("output")) {
        content.saveTo(line.options.value("output"));
        return ExitStatus::Done;
    }
    const bool isText = asJson || answer.value(0).toString() == QLatin1String("text");
    if (!isText && ::isatty(STDOUT_FILENO) != 0)
        throw CommandError(ExitStatus::Failed,
                           QStringLiteral("a picture is not printed on a terminal; use --output FILE"));
    content.copyTo(STDOUT_FILENO);
    return ExitStatus::Done;
}

ExitStatus VerbRunner::recognize(const CommandLine& line)
{
    QVariantMap options;
    if (line.options.contains("fast"))
        options.insert(QStringLiteral("fast"), true);
    const bool isRegion = line.operands.isEmpty();
    const QVariantList arguments =
        isRegion ? QVariantList{options}
                 : QVariantList{QVariant::fromValue(openPicture(line.operands.first())), options};
    const QVariantList answer =
        m_client.call(isRegion ? QStringLiteral("RecognizeRegion") : QStringLiteral("RecognizePicture"),
                      arguments, BusClient::Patience::Endless);
    const QByteArray result = handedIn(answer, 0).bytes();
    if (line.options.contains("json"))
        print(result);
    else
        print(QJsonDocument::fromJson(result)[QStringLiteral("text")].toString().toUtf8() + '\n');
    return ExitStatus::Done;
}

ExitStatus VerbRunner::importFiles(const CommandLine& line)
{
    m_client.ensureRunning();
    ExitStatus status = ExitStatus::Done;
    const QByteArrayList& files = line.operands;
    QList<std::optional<QDBusPendingCall>> calls;
    for (qsizetype i = 0; i < files.size(); ++i) {
        for (qsizetype next = calls.size(); next < std::min(files.size(), i + kImportsAtOnce); ++next)
            calls.append(beginImport(files.at(next)));
        status = worse(status, finishImport(files.at(i), calls.at(i)));
    }
    return status;
}

std::optional<QDBusPendingCall> VerbRunner::beginImport(const QByteArray& file)
{
    struct stat facts {};
    if (::stat(file.constData(), &facts) != 0 || !S_ISREG(facts.st_mode))
        return std::nullopt;
    return m_client.begin(QStringLiteral("Import"), {absoluteFile(file)});
}

ExitStatus VerbRunner::finishImport(const QByteArray& file, const std::optional<QDBusPendingCall>& call)
{
    const QString name = ItemLines::flat(text(file));
    if (!call) {
        complain(name + QStringLiteral(": there is no such file"));
        return ExitStatus::Failed;
    }
    try {
        const QVariantList answer = BusClient::result(*call);
        const QString outcome = answer.value(0).toString();
        if (outcome == QLatin1String("added") || outcome == QLatin1String("known")) {
            print((outcome + QLatin1Char('\t') + answer.value(1).toString() + QLatin1Char('\t') + name +
                   QLatin1Char('\n'))
                      .toUtf8());
            return ExitStatus::Done;
        }
        const bool isExcluded = outcome == QLatin1String("excluded");
        complain(name + (isExcluded ? QStringLiteral(": excluded by the settings")
                                    : QStringLiteral(": not a kind of picture that is kept")));
    } catch (const CommandError& error) {
        complain(name + QStringLiteral(": ") + error.localizedDescription());
    }
    return ExitStatus::Failed;
}

ExitStatus VerbRunner::exportTo(const QByteArray& folder)
{
    const QVariantList answer =
        m_client.call(QStringLiteral("Export"), {absoluteFolder(folder)}, BusClient::Patience::Endless);
    const QVariantMap summary = qdbus_cast<QVariantMap>(answer.value(0));
    print(ItemLines::facts(summary));
    if (number(summary, "missingFiles") > 0)
        complain(QStringLiteral("some files that items speak of are not in the library"));
    return ExitStatus::Done;
}

ExitStatus VerbRunner::restoreFrom(const QByteArray& folder)
{
    const QVariantList answer =
        m_client.call(QStringLiteral("Restore"), {absoluteFolder(folder)}, BusClient::Patience::Endless);
    QVariantMap summary = qdbus_cast<QVariantMap>(answer.value(0));
    QStringList lines;
    for (const qint64 line : qdbus_cast<QList<qlonglong>>(summary.take(QStringLiteral("unreadableLines"))))
        lines.append(QString::number(line));
    print(ItemLines::facts(summary));
    if (lines.isEmpty())
        return ExitStatus::Done;
    complain(QStringLiteral("no items could be read from these lines of items.jsonl, or more: ") +
             lines.join(QStringLiteral(", ")));
    return ExitStatus::Failed;
}

ExitStatus VerbRunner::purge(bool everything)
{
    const QVariantList answer =
        m_client.call(QStringLiteral("PurgeTrash"), {everything}, BusClient::Patience::Endless);
    print(ItemLines::facts({{QStringLiteral("removed"), answer.value(0)}}));
    return ExitStatus::Done;
}

ExitStatus VerbRunner::watch()
{
    m_client.ensureRunning();
    ChangeWatcher watcher(m_client);
    QObject::connect(&watcher, &ChangeWatcher::ended, qApp, [] { QCoreApplication::exit(1); });
    QCoreApplication::exec();
    throw CommandError(ExitStatus::Failed, QStringLiteral("Tessary has ended"));
}

} // namespace tessary
