#include "capture/FrontmostAppTracker.h"

#include "base/AtomicFile.h"

#include <QFile>

namespace tessary {
namespace {

using namespace std::chrono_literals;

constexpr double kLongestAge = 172'800; // 48 hours, in seconds
constexpr qsizetype kMostSamples = 2000;
constexpr double kLookAhead = 2.0; // seconds
constexpr auto kHeartbeat = 300s;
constexpr qint64 kLargestLog = 16LL * 1024 * 1024; // far more than the samples that we keep can take

QList<FrontmostAppSample> samplesIn(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > kLargestLog)
        return {};
    return decodeSamples(file.read(kLargestLog));
}

} // namespace

QCoro::Task<std::unique_ptr<FrontmostAppTracker>>
FrontmostAppTracker::open(QString logPath, Workspace& workspace, Clock& clock)
{
    std::unique_ptr<FrontmostAppTracker> tracker(new FrontmostAppTracker(logPath, workspace, clock));
    auto reading = tracker->m_persistenceQueue.post([logPath] { return samplesIn(logPath); });
    tracker->m_samples = co_await reading;
    tracker->prune(clock.now());
    tracker->record(workspace.frontmostApplication(), clock.now(), Repeats::Dropped);
    tracker->observe();
    co_return tracker;
}

FrontmostAppTracker::FrontmostAppTracker(QString logPath, Workspace& workspace, Clock& clock)
    : m_logPath(std::move(logPath)),
      m_workspace(workspace),
      m_clock(clock),
      m_persistenceQueue(QStringLiteral("com.tessary.frontmost-app-log"))
{
}

FrontmostAppTracker::~FrontmostAppTracker() = default;

void FrontmostAppTracker::observe()
{
    connect(&m_workspace, &Workspace::applicationActivated, this,
            [this](const RunningApplication& application) {
                record(application, m_clock.now(), Repeats::Dropped);
            });
    const auto recordFrontmost = [this] {
        record(m_workspace.frontmostApplication(), m_clock.now(), Repeats::Recorded);
    };
    connect(&m_workspace, &Workspace::didWake, this, recordFrontmost);
    m_heartbeatTimer = m_clock.repeat(kHeartbeat, recordFrontmost);
}

std::optional<SourceApplicationSnapshot> FrontmostAppTracker::currentApplication() const
{
    const std::optional<RunningApplication> application = m_workspace.frontmostApplication();
    if (!application)
        return std::nullopt;
    return SourceApplicationSnapshot::of(*application);
}

std::optional<SourceApplicationSnapshot>
FrontmostAppTracker::latestApplication(const QString& excludingBundleIdentifier) const
{
    const auto newest =
        std::find_if(m_samples.crbegin(), m_samples.crend(), [&](const FrontmostAppSample& sample) {
            return sample.application.bundleIdentifier != excludingBundleIdentifier;
        });
    if (newest == m_samples.crend())
        return std::nullopt;
    return newest->application;
}

std::optional<SourceApplicationSnapshot> FrontmostAppTracker::application(Date closestTo,
                                                                          double maxDistance) const
{
    const std::optional<FrontmostAppSample> sample = closestSample(closestTo, m_samples, maxDistance);
    if (!sample)
        return std::nullopt;
    return sample->application;
}

std::optional<FrontmostAppSample>
FrontmostAppTracker::closestSample(Date target, const QList<FrontmostAppSample>& samples, double maxDistance)
{
    const FrontmostAppSample* before = nullptr;
    const FrontmostAppSample* after = nullptr;
    for (const FrontmostAppSample& sample : samples) {
        const double ahead = sample.timestamp.secondsSince1970 - target.secondsSince1970;
        if (ahead <= 0 && -ahead <= maxDistance &&
            (before == nullptr || sample.timestamp >= before->timestamp))
            before = &sample;
        if (ahead > 0 && ahead <= kLookAhead && (after == nullptr || sample.timestamp < after->timestamp))
            after = &sample;
    }
    const FrontmostAppSample* closest = before != nullptr ? before : after;
    return closest != nullptr ? std::optional(*closest) : std::nullopt;
}

void FrontmostAppTracker::record(const std::optional<RunningApplication>& application, Date at,
                                 Repeats repeats)
{
    if (!application)
        return;
    const SourceApplicationSnapshot snapshot = SourceApplicationSnapshot::of(*application);
    if (repeats == Repeats::Dropped && !m_samples.isEmpty() && m_samples.constLast().application == snapshot)
        return;
    m_samples.append({at, snapshot});
    prune(at);
    persist();
}

void FrontmostAppTracker::prune(Date now)
{
    const Date oldest = now.addingSeconds(-kLongestAge);
    m_samples.removeIf([&](const FrontmostAppSample& sample) { return sample.timestamp < oldest; });
    if (m_samples.size() > kMostSamples)
        m_samples.remove(0, m_samples.size() - kMostSamples);
}

QCoro::Task<> FrontmostAppTracker::erase()
{
    clear();
    auto removing = m_persistenceQueue.post([path = m_logPath] { removeFile(path); });
    co_await removing;
}

void FrontmostAppTracker::persist()
{
    m_persistenceQueue.postDetached([path = m_logPath, samples = m_samples] {
        try {
            writeFileAtomically(path, encodeSamples(samples), Durability::Process);
        } catch (const FileError&) {
            // The history goes on in memory.
        }
    });
}

} // namespace tessary
