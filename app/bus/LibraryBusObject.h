#pragma once

#include "app/bus/BusCommands.h"

#include <QDBusContext>
#include <QDBusUnixFileDescriptor>
#include <QObject>

#include <memory>

namespace tessary {

class AppRuntime;

/// The object on the session bus: its methods are those of `com.tessary.Tessary1`, documented in that
/// interface's file. What needs the library is answered later, so that nothing waits here. Main thread only.
///
/// The declared results only tell the bus what the answers look like.
class LibraryBusObject : public QObject, protected QDBusContext {
    Q_OBJECT
public:
    LibraryBusObject();
    ~LibraryBusObject() override;

    /// From now on calls are answered. They come through the event loop, so none is too early.
    void attach(AppRuntime& runtime);
    /// The program is ending: later calls are refused.
    void detach();

public Q_SLOTS:
    void ShowPanel();
    void TogglePanel();
    void ShowSettings();
    void Pause();
    void Resume();
    QVariantMap Status();
    QDBusUnixFileDescriptor Search(const QString& query, const QVariantMap& options, uint& count, bool& more);
    QDBusUnixFileDescriptor Record(const QString& id);
    QString Content(const QString& id, QDBusUnixFileDescriptor& content);
    void Copy(const QString& id);
    void Paste(const QString& id);
    QString Import(const QByteArray& path, QString& id);
    void SetTags(const QString& id, const QStringList& tags);
    void SetNote(const QString& id, const QString& note);
    void SetFavorite(const QString& id, bool favorite);
    void SetPinned(const QString& id, bool pinned);
    void MoveToTrash(const QString& id);
    QVariantMap Export(const QString& folder);
    QVariantMap Restore(const QString& folder);
    qlonglong PurgeTrash(bool everything);
    QVariantMap Usage();
    QDBusUnixFileDescriptor RecognizeRegion(const QVariantMap& options);
    QDBusUnixFileDescriptor RecognizePicture(const QDBusUnixFileDescriptor& picture,
                                             const QVariantMap& options);

Q_SIGNALS:
    void LibraryChanged(const QString& kind, const QStringList& ids);

private:
    using Ask = std::function<BusCommands::Answer(BusCommands&)>;

    /// Answers the running call with what the commands answer, when they do.
    void answer(const Ask& ask);
    /// Answers the running call with nothing, having done it. @returns null when there is nobody to do it.
    AppRuntime* runtime();
    static QCoro::Task<> send(QDBusConnection bus, QDBusMessage call, BusCommands::Answer answer);

    AppRuntime* m_runtime = nullptr;
    std::unique_ptr<BusCommands> m_commands;
};

} // namespace tessary
