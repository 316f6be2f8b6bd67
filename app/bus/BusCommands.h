#pragma once

#include "app/LocalOCRFlow.h"
#include "base/SerialLane.h"
#include "store/ScreenshotRecord.h"

#include <qcoro/qcorotask.h>

#include <QDBusUnixFileDescriptor>
#include <QVariant>

namespace tessary {

class AppRuntime;
class SQLiteStore;
struct ListRequest;

/// What the methods of the bus interface do to the library: each of them waits until it is open, and returns
/// the answer's arguments in order. Main thread only. All throw BusError, and the errors of what they use.
class BusCommands {
public:
    using Answer = QCoro::Task<QVariantList>;

    explicit BusCommands(AppRuntime& runtime);

    [[nodiscard]] Answer status();
    [[nodiscard]] Answer setMonitoring(bool isMonitoring);
    [[nodiscard]] Answer search(QString query, QVariantMap options);
    [[nodiscard]] Answer record(QString id);
    [[nodiscard]] Answer content(QString id);
    [[nodiscard]] Answer copy(QString id, bool paste);
    /// @param path absolute, any bytes.
    [[nodiscard]] Answer importFile(QByteArray path);
    [[nodiscard]] Answer setTags(QString id, QStringList tags);
    [[nodiscard]] Answer setNote(QString id, QString note);
    [[nodiscard]] Answer setFavorite(QString id, bool isFavorite);
    [[nodiscard]] Answer setPinned(QString id, bool isPinned);
    [[nodiscard]] Answer moveToTrash(QString id);
    [[nodiscard]] Answer exportTo(QString folder);
    [[nodiscard]] Answer restoreFrom(QString folder);
    [[nodiscard]] Answer purgeTrash(bool everything);
    [[nodiscard]] Answer usage();
    [[nodiscard]] Answer recognizeRegion(QVariantMap options);
    [[nodiscard]] Answer recognizePicture(QDBusUnixFileDescriptor picture, QVariantMap options);

private:
    /// @throws BusError (Failed) when there is no library.
    QCoro::Task<SQLiteStore*> library();
    /// The whole item. @throws BusError (NotFound).
    QCoro::Task<ScreenshotRecord> item(QString id);
    QCoro::Task<QList<ScreenshotRecord>> wholeItems(QList<ScreenshotRecord> listed);
    QCoro::Task<QVariantList> described(LocalOCRFlow::RecognizedPicture picture);
    QCoro::Task<QVariantList> lines(QList<ScreenshotRecord> items, int limit);

    AppRuntime& m_runtime;
    SerialLane m_lane;
};

} // namespace tessary
