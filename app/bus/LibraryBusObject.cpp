#include "app/bus/LibraryBusObject.h"

#include "app/AppRuntime.h"
#include "app/bus/BusError.h"
#include "tessary1adaptor.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcBus, "tessary.bus")

namespace tessary {
namespace {

QDBusMessage refusal(const QDBusMessage& call, const std::exception& error)
{
    const auto* ours = dynamic_cast<const BusError*>(&error);
    const BusError::Case which = ours != nullptr ? ours->which() : BusError::Case::Failed;
    return call.createErrorReply(BusError::name(which), localizedDescription(error));
}

BusError ending()
{
    return {BusError::Case::Failed, QStringLiteral("Tessary is ending")};
}

} // namespace

LibraryBusObject::LibraryBusObject()
{
    // Methods that hand one out are otherwise not found until the first has been sent.
    qRegisterMetaType<QDBusUnixFileDescriptor>("QDBusUnixFileDescriptor");
    new Tessary1Adaptor(this); // belongs to this
}

LibraryBusObject::~LibraryBusObject() = default;

void LibraryBusObject::attach(AppRuntime& runtime)
{
    m_runtime = &runtime;
    m_commands = std::make_unique<BusCommands>(runtime);
    connect(&runtime, &AppRuntime::libraryChanged, this, [this](const LibraryChange& change) {
        QStringList ids;
        for (const QUuid& id : change.items)
            ids.append(identifierText(id));
        Q_EMIT LibraryChanged(rawValue(change.kind), ids);
    });
}

void LibraryBusObject::detach()
{
    if (m_runtime != nullptr)
        disconnect(m_runtime, nullptr, this, nullptr);
    m_runtime = nullptr;
}

AppRuntime* LibraryBusObject::runtime()
{
    if (m_runtime == nullptr && calledFromDBus())
        sendErrorReply(BusError::name(BusError::Case::Failed), ending().localizedDescription());
    return m_runtime;
}

void LibraryBusObject::answer(const Ask& ask)
{
    if (runtime() == nullptr || !calledFromDBus())
        return;
    setDelayedReply(true);
    m_runtime->perform(send(connection(), message(), ask(*m_commands)));
}

QCoro::Task<> LibraryBusObject::send(QDBusConnection bus, QDBusMessage call, BusCommands::Answer answer)
{
    QDBusMessage reply;
    try {
        const QVariantList arguments = co_await answer;
        reply = call.createReply(arguments);
    } catch (const std::exception& error) {
        // What failed is the caller's business; its sentence may name a file.
        qCInfo(lcBus, "%s was refused", qUtf8Printable(call.member()));
        reply = refusal(call, error);
    }
    bus.send(reply);
}

// --- windows and recording --------------------------------------------------

void LibraryBusObject::ShowPanel()
{
    if (AppRuntime* const there = runtime())
        there->showQuickSearch();
}

void LibraryBusObject::TogglePanel()
{
    if (AppRuntime* const there = runtime())
        there->toggleQuickSearch();
}

void LibraryBusObject::ShowSettings()
{
    if (AppRuntime* const there = runtime())
        there->openSettings();
}

void LibraryBusObject::Pause()
{
    answer([](BusCommands& commands) { return commands.setMonitoring(false); });
}

void LibraryBusObject::Resume()
{
    answer([](BusCommands& commands) { return commands.setMonitoring(true); });
}

// --- the library ------------------------------------------------------------

QVariantMap LibraryBusObject::Status()
{
    answer([](BusCommands& commands) { return commands.status(); });
    return {};
}

QDBusUnixFileDescriptor LibraryBusObject::Search(const QString& query, const QVariantMap& options,
                                                 uint& count, bool& more)
{
    count = 0;
    more = false;
    answer([&](BusCommands& commands) { return commands.search(query, options); });
    return {};
}

QDBusUnixFileDescriptor LibraryBusObject::Record(const QString& id)
{
    answer([&](BusCommands& commands) { return commands.record(id); });
    return {};
}

QString LibraryBusObject::Content(const QString& id, QDBusUnixFileDescriptor& content)
{
    content = {};
    answer([&](BusCommands& commands) { return commands.content(id); });
    return {};
}

void LibraryBusObject::Copy(const QString& id)
{
    answer([&](BusCommands& commands) { return commands.copy(id, false); });
}

void LibraryBusObject::Paste(const QString& id)
{
    answer([&](BusCommands& commands) { return commands.copy(id, true); });
}

QString LibraryBusObject::Import(const QByteArray& path, QString& id)
{
    id.clear();
    answer([&](BusCommands& commands) { return commands.importFile(path); });
    return {};
}

void LibraryBusObject::SetTags(const QString& id, const QStringList& tags)
{
    answer([&](BusCommands& commands) { return commands.setTags(id, tags); });
}

void LibraryBusObject::SetNote(const QString& id, const QString& note)
{
    answer([&](BusCommands& commands) { return commands.setNote(id, note); });
}

void LibraryBusObject::SetFavorite(const QString& id, bool favorite)
{
    answer([&](BusCommands& commands) { return commands.setFavorite(id, favorite); });
}

void LibraryBusObject::SetPinned(const QString& id, bool pinned)
{
    answer([&](BusCommands& commands) { return commands.setPinned(id, pinned); });
}

void LibraryBusObject::MoveToTrash(const QString& id)
{
    answer([&](BusCommands& commands) { return commands.moveToTrash(id); });
}

QVariantMap LibraryBusObject::Export(const QString& folder)
{
    answer([&](BusCommands& commands) { return commands.exportTo(folder); });
    return {};
}

QVariantMap LibraryBusObject::Restore(const QString& folder)
{
    answer([&](BusCommands& commands) { return commands.restoreFrom(folder); });
    return {};
}

qlonglong LibraryBusObject::PurgeTrash(bool everything)
{
    answer([&](BusCommands& commands) { return commands.purgeTrash(everything); });
    return 0;
}

QVariantMap LibraryBusObject::Usage()
{
    answer([](BusCommands& commands) { return commands.usage(); });
    return {};
}

// --- recognition ------------------------------------------------------------

QDBusUnixFileDescriptor LibraryBusObject::RecognizeRegion(const QVariantMap& options)
{
    answer([&](BusCommands& commands) { return commands.recognizeRegion(options); });
    return {};
}

QDBusUnixFileDescriptor LibraryBusObject::RecognizePicture(const QDBusUnixFileDescriptor& picture,
                                                           const QVariantMap& options)
{
    answer([&](BusCommands& commands) { return commands.recognizePicture(picture, options); });
    return {};
}

} // namespace tessary
