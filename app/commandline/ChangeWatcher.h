#pragma once

#include <QDBusServiceWatcher>
#include <QObject>
#include <QStringList>

namespace tessary {

class BusClient;

/// Prints a line for each change of the library, until the program that changes it ends.
class ChangeWatcher : public QObject {
    Q_OBJECT
public:
    /// Begins to listen. @throws CommandError when that is not possible.
    explicit ChangeWatcher(BusClient& client);

Q_SIGNALS:
    /// No changes will come any more.
    void ended();

private Q_SLOTS:
    void print(const QString& kind, const QStringList& ids);

private:
    QDBusServiceWatcher m_service;
};

} // namespace tessary
