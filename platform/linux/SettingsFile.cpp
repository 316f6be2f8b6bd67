#include "platform/linux/SettingsFile.h"

#include "base/AtomicFile.h"
#include "platform/linux/KeyFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QLoggingCategory>
#include <QSettings>
#include <QTemporaryFile>
#include <QTimer>

#include <cerrno>
#include <cstdio>
#include <sys/stat.h>

namespace tessary {
namespace {

Q_LOGGING_CATEGORY(lcSettings, "tessary.settings")

constexpr qint64 kMaximumBytes = 1024 * 1024;
constexpr std::chrono::milliseconds kGather{100};
constexpr std::chrono::milliseconds kSettling{150};

/// Creates missing folders for the person alone. Those that exist stay as they are.
void makePrivateFolder(const QString& path)
{
    if (QFileInfo(path).isDir())
        return;
    makePrivateFolder(QFileInfo(path).path());
    if (::mkdir(QFile::encodeName(path).constData(), 0700) != 0 && errno != EEXIST)
        throw FileError::fromErrno(errno, path, FileError::Operation::Write);
}

/// The INI form of the values. Qt writes to files only, so one is made for the purpose.
QByteArray encoded(const QHash<QString, QVariant>& values, const QString& folder)
{
    QTemporaryFile file(folder + QStringLiteral("/.settings-XXXXXX"));
    if (!file.open())
        throw FileError::fromErrno(errno, file.fileTemplate(), FileError::Operation::Write);
    file.close();
    {
        QSettings settings(file.fileName(), QSettings::IniFormat);
        for (auto entry = values.cbegin(); entry != values.cend(); ++entry)
            settings.setValue(entry.key(), entry.value());
        settings.sync();
        if (settings.status() != QSettings::NoError)
            throw FileError(FileError::Case::WriteUnknown, file.fileName());
    }
    QFile written(file.fileName());
    if (!written.open(QIODevice::ReadOnly))
        throw FileError(FileError::Case::WriteUnknown, file.fileName());
    return written.readAll();
}

/// @returns nothing when the bytes are no settings.
std::optional<QHash<QString, QVariant>> decoded(const QString& path)
{
    const std::optional<QByteArray> bytes = readRegularFile(path, kMaximumBytes);
    if (!bytes || bytes->contains('\0'))
        return std::nullopt;
    QHash<QString, QVariant> values;
    const QSettings settings(path, QSettings::IniFormat);
    for (const QString& key : settings.allKeys()) {
        const QVariant value = settings.value(key);
        // An empty list is written as an invalid value, which nothing else is.
        values.insert(key, value.isValid() ? value : QVariant(QStringList()));
    }
    if (settings.status() != QSettings::NoError)
        return std::nullopt;
    return values;
}

/// As `decoded`; an empty file is one that somebody is about to write.
std::optional<QHash<QString, QVariant>> decodedUnlessEmpty(const QString& path)
{
    return QFileInfo(path).size() > 0 ? decoded(path) : std::nullopt;
}

void apply(const QHash<QString, QVariant>& changes, QHash<QString, QVariant>& values)
{
    for (auto change = changes.cbegin(); change != changes.cend(); ++change)
        if (change->isValid())
            values.insert(change.key(), *change);
        else
            values.remove(change.key());
}

/// A file has texts where the program has numbers and truths.
bool areEqual(const QVariant& one, const QVariant& other)
{
    return one.isValid() == other.isValid() && one.toStringList() == other.toStringList();
}

} // namespace

SettingsFile::SettingsFile(const QString& path)
    : m_path(path),
      m_delay(std::make_unique<QTimer>()),
      m_settling(std::make_unique<QTimer>()),
      m_watcher(std::make_unique<QFileSystemWatcher>()),
      m_context(std::make_unique<QObject>()),
      m_lane(QStringLiteral("tessary-settings"))
{
    m_delay->setSingleShot(true);
    m_delay->setInterval(kGather);
    QObject::connect(m_delay.get(), &QTimer::timeout, [this] { write(); });
    m_settling->setSingleShot(true);
    m_settling->setInterval(kSettling);
    QObject::connect(m_settling.get(), &QTimer::timeout, [this] { readAgain(); });
    const auto settle = [this] { m_settling->start(); };
    QObject::connect(m_watcher.get(), &QFileSystemWatcher::fileChanged, m_settling.get(), settle);
    QObject::connect(m_watcher.get(), &QFileSystemWatcher::directoryChanged, m_settling.get(), settle);
    load();
    watch();
}

SettingsFile::~SettingsFile()
{
    if (!m_pending.isEmpty())
        write();
}

void SettingsFile::load()
{
    // The target of a link is replaced, not the link.
    if (const QString target = QFileInfo(m_path).canonicalFilePath(); !target.isEmpty())
        m_path = target;
    if (!QFileInfo::exists(m_path))
        return;
    if (auto values = decoded(m_path))
        m_values = std::move(*values);
    else
        keepAside();
}

void SettingsFile::keepAside()
{
    QString aside = m_path + QStringLiteral(".bad");
    for (int number = 2; QFileInfo::exists(aside) || QFileInfo(aside).isSymLink(); ++number)
        aside = m_path + QStringLiteral(".bad.%1").arg(number);
    const bool moved =
        ::rename(QFile::encodeName(m_path).constData(), QFile::encodeName(aside).constData()) == 0;
    qCWarning(lcSettings, "The settings file is damaged; %s",
              moved ? "kept aside" : "it could not be kept aside");
    const QString name = QFileInfo(aside).fileName();
    m_problem =
        moved ? QCoreApplication::translate("SettingsFile", "设置文件已损坏，已另存为 %1，并恢复默认设置")
                    .arg(name)
              : QCoreApplication::translate("SettingsFile", "设置文件无法读取，已使用默认设置");
}

void SettingsFile::set(const QString& key, const QVariant& value)
{
    const auto current = m_values.constFind(key);
    const bool present = current != m_values.constEnd();
    if (present ? *current == value && current->typeId() == value.typeId() : !value.isValid())
        return;
    if (value.isValid())
        m_values.insert(key, value);
    else
        m_values.remove(key);
    m_pending.insert(key, value);
    scheduleWrite();
}

void SettingsFile::setWriteFailureHandler(std::function<void(const FileError&)> handler)
{
    m_onWriteFailure = std::move(handler);
}

void SettingsFile::scheduleWrite()
{
    if (!m_delay->isActive())
        m_delay->start();
}

void SettingsFile::write()
{
    m_lane.postDetached(
        [this, values = m_values, changes = m_pending, path = m_path, context = m_context.get()] {
            const Outcome outcome = writeNow(values, changes, path);
            if (outcome.failure)
                qCWarning(lcSettings, "Settings not written: case %d",
                          static_cast<int>(outcome.failure->which()));
            QMetaObject::invokeMethod(
                context, [this, outcome, changes] { reportOutcome(outcome, changes); }, Qt::QueuedConnection);
        });
}

SettingsFile::Outcome SettingsFile::writeNow(const Values& values, const Values& changes, const QString& path)
{
    Outcome outcome;
    try {
        const QString folder = QFileInfo(path).path();
        makePrivateFolder(folder);
        outcome.written = decodedUnlessEmpty(path).value_or(values);
        apply(changes, outcome.written);
        writeFileAtomically(path, encoded(outcome.written, folder), Durability::PowerCut);
    } catch (const FileError& error) {
        outcome.failure = error;
    }
    return outcome;
}

void SettingsFile::reportOutcome(const Outcome& outcome, const Values& changes)
{
    const bool first = outcome.failure && !m_failing;
    m_failing = outcome.failure.has_value();
    if (first && m_onWriteFailure)
        m_onWriteFailure(*outcome.failure);
    if (m_failing)
        return;
    for (auto change = changes.cbegin(); change != changes.cend(); ++change)
        if (m_pending.value(change.key()) == *change)
            m_pending.remove(change.key());
    watch();
    adopt(outcome.written);
}

// --- other programs ---------------------------------------------------------

/// A replaced file is another one, and the folder may be there only since the first writing.
void SettingsFile::watch()
{
    for (const QString& path : {m_path, QFileInfo(m_path).path()})
        if (!m_path.isEmpty() && QFileInfo::exists(path))
            m_watcher->addPath(path);
}

void SettingsFile::readAgain()
{
    watch();
    m_lane.postDetached([this, path = m_path, context = m_context.get()] {
        const std::optional<Values> values = decodedUnlessEmpty(path);
        if (values)
            QMetaObject::invokeMethod(
                context, [this, values] { adopt(*values); }, Qt::QueuedConnection);
    });
}

void SettingsFile::adopt(const Values& values)
{
    Values adopted = values;
    apply(m_pending, adopted);
    bool isOther = adopted.size() != m_values.size();
    for (auto entry = adopted.cbegin(); entry != adopted.cend() && !isOther; ++entry)
        isOther = !areEqual(*entry, m_values.value(entry.key()));
    if (!isOther)
        return;
    m_values = adopted;
    qCInfo(lcSettings, "settings changed by another program");
    if (m_onChange)
        m_onChange();
}

} // namespace tessary
