#include "platform/linux/DesktopEntry.h"

#include "platform/linux/KeyFile.h"

#include <QFileInfo>

namespace tessary {
namespace {

constexpr qint64 kMaximumBytes = 1024 * 1024;
const char* const kGroup = "Desktop Entry";

/// The keys to try for a localized value, most specific first, ending with the plain one.
QList<QByteArray> localizedKeys(const QByteArray& key, const QString& locale)
{
    QString language = locale;
    QString modifier;
    if (const qsizetype at = language.indexOf(u'@'); at >= 0) {
        modifier = language.sliced(at);
        language.truncate(at);
    }
    language.truncate(language.indexOf(u'.') < 0 ? language.size() : language.indexOf(u'.'));
    const QString plain = language.section(u'_', 0, 0);
    QStringList tries;
    if (language != plain)
        tries << language + modifier << language;
    tries << plain + modifier << plain;
    tries.removeDuplicates();
    QList<QByteArray> keys;
    for (const QString& one : tries) {
        if (!one.isEmpty())
            keys.append(key + '[' + one.toUtf8() + ']');
    }
    keys.append(key);
    return keys;
}

QString unescaped(const QString& value)
{
    QString result;
    result.reserve(value.size());
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value.at(i) != u'\\' || i + 1 == value.size()) {
            result.append(value.at(i));
            continue;
        }
        const QChar code = value.at(++i);
        const bool blank = code == u's' || code == u'n' || code == u't' || code == u'r';
        result.append(blank ? QChar(u' ') : code);
    }
    return result;
}

/// The words of a command line, quotes and their escapes undone.
QStringList words(const QString& command)
{
    QStringList result;
    QString word;
    bool quoted = false;
    bool started = false;
    for (qsizetype i = 0; i < command.size(); ++i) {
        const QChar c = command.at(i);
        if (c == u'"') {
            quoted = !quoted;
            started = true;
        } else if (c == u'\\' && i + 1 < command.size()) {
            word.append(command.at(++i));
            started = true;
        } else if (c.isSpace() && !quoted) {
            if (started)
                result.append(std::exchange(word, {}));
            started = false;
        } else {
            word.append(c);
            started = true;
        }
    }
    if (started)
        result.append(word);
    return result;
}

/// The program that a command runs: `env NAME=value program` runs `program`.
QString programOf(const QString& command)
{
    QStringList left = words(command);
    const bool viaEnv = !left.isEmpty() && QFileInfo(left.first()).fileName() == QLatin1String("env");
    if (viaEnv)
        left.removeFirst();
    while (viaEnv && !left.isEmpty() && left.first().contains(u'='))
        left.removeFirst();
    return left.value(0);
}

} // namespace

std::optional<DesktopEntry> parseDesktopEntry(const QByteArray& bytes, const QString& locale)
{
    const KeyFile file = KeyFile::parse(bytes);
    const auto text = [&file](const char* key) {
        return unescaped(file.value(kGroup, key).value_or(QString()));
    };
    DesktopEntry entry;
    entry.hidden = file.isTrue(kGroup, "Hidden");
    // A file that hides another needs no more than that line.
    if (!entry.hidden && text("Type") != QLatin1String("Application"))
        return std::nullopt;
    for (const QByteArray& key : localizedKeys("Name", locale)) {
        entry.name = text(key.constData());
        if (!entry.name.isEmpty())
            break;
    }
    entry.icon = text("Icon");
    entry.executable = programOf(text("Exec"));
    entry.tryExecutable = text("TryExec");
    entry.startupWMClass = text("StartupWMClass");
    entry.categories = file.list(kGroup, "Categories", u';');
    entry.noDisplay = file.isTrue(kGroup, "NoDisplay");
    return entry;
}

std::optional<DesktopEntry> readDesktopEntry(const QString& path, const QString& locale)
{
    const std::optional<QByteArray> bytes = readRegularFile(path, kMaximumBytes);
    std::optional<DesktopEntry> entry = bytes ? parseDesktopEntry(*bytes, locale) : std::nullopt;
    if (!entry)
        return std::nullopt;
    entry->path = path;
    entry->id = QFileInfo(path).completeBaseName();
    if (entry->name.isEmpty())
        entry->name = entry->id;
    return entry;
}

QString messagesLocale()
{
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (!qEnvironmentVariableIsEmpty(variable))
            return qEnvironmentVariable(variable);
    }
    return {};
}

} // namespace tessary
