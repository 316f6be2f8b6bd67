#include "platform/linux/SettingsFile.h"

#include "base/AtomicFile.h"
#include "platform/linux/KeyFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
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

std::optional<FileError> writeNow(const QHash<QString, QVariant>& values, const QString& path)
{
    try {
        const QString folder = QFileInfo(path).path();
        makePrivateFolder(folder);
        writeFileAtomically(path, encoded(values, folder), Durability::PowerCut);
    } catch (const FileError& error) {
        return error;
    }
    return std::nullopt;
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

} // namespace

SettingsFile::SettingsFile(const QString& path)
    : m_path(path),
      m_delay(std::make_unique<QTimer>()),
      m_context(std::make_unique<QObject>()),
      m_lane(QStringLiteral("tessary-settings"))
{
    m_delay->setSingleShot(true);
    m_delay->setInterval(kGather);
    QObject::connect(m_delay.get(), &QTimer::timeout, [this] { write(); });
    load();
}

SettingsFile::~SettingsFile()
{
    if (m_unsaved || m_failing)
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
    scheduleWrite();
}

void SettingsFile::setWriteFailureHandler(std::function<void(const FileError&)> handler)
{
    m_onWriteFailure = std::move(handler);
}

void SettingsFile::scheduleWrite()
{
    m_unsaved = true;
    if (!m_delay->isActive())
        m_delay->start();
}

void SettingsFile::write()
{
    m_unsaved = false;
    m_lane.postDetached([this, values = m_values, path = m_path, context = m_context.get()] {
        const std::optional<FileError> failure = writeNow(values, path);
        if (failure)
            qCWarning(lcSettings, "Settings not written: case %d", static_cast<int>(failure->which()));
        QMetaObject::invokeMethod(
            context, [this, failure] { reportOutcome(failure); }, Qt::QueuedConnection);
    });
}

void SettingsFile::reportOutcome(const std::optional<FileError>& failure)
{
    const bool first = failure && !m_failing;
    m_failing = failure.has_value();
    if (first && m_onWriteFailure)
        m_onWriteFailure(*failure);
}

} // namespace tessary
