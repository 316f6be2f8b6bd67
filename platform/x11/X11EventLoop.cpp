#include "platform/x11/X11EventLoop.h"

#include "platform/x11/XcbReply.h"

#include <cerrno>
#include <csignal>
#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tessary {
namespace {

/// Events served before posted work and deadlines get their turn.
constexpr int kEventsPerTurn = 64;

xcb_connection_t* connectTo(const QByteArray& display, int* screenNumber)
{
    xcb_connection_t* connection =
        xcb_connect(display.isEmpty() ? nullptr : display.constData(), screenNumber);
    if (const int code = xcb_connection_has_error(connection); code != 0) {
        xcb_disconnect(connection);
        throw X11Error(X11Error::Case::NoDisplay, QStringLiteral("xcb connection error %1").arg(code));
    }
    return connection;
}

const xcb_screen_t* screenOf(xcb_connection_t* connection, int number)
{
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; number > 0 && screens.rem > 1; --number)
        xcb_screen_next(&screens);
    return screens.data;
}

/// Writing to a server that died must be an error, not our end.
void blockBrokenPipeSignal()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

/// Rounded up, so that the deadline has passed when poll() returns.
int millisecondsUntil(X11EventLoop::TimePoint when)
{
    using std::chrono::milliseconds;
    const auto left = std::chrono::ceil<milliseconds>(when - std::chrono::steady_clock::now());
    constexpr milliseconds kLongest = std::chrono::hours(24);
    return static_cast<int>(std::clamp(left, milliseconds::zero(), kLongest).count());
}

} // namespace

X11EventLoop::X11EventLoop(QByteArray name, const QByteArray& display)
    : m_name(std::move(name)),
      m_atoms(nullptr)
{
    int screenNumber = 0;
    m_connection = connectTo(display, &screenNumber);
    m_screen = screenOf(m_connection, screenNumber);
    m_atoms = AtomCache(m_connection);
    m_wakeDescriptor = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (m_wakeDescriptor < 0 || m_screen == nullptr) {
        xcb_disconnect(m_connection);
        throw X11Error(X11Error::Case::NoDisplay, QStringLiteral("no screen or no descriptor left"));
    }
}

X11EventLoop::~X11EventLoop()
{
    stop();
    ::close(m_wakeDescriptor);
    xcb_disconnect(m_connection);
}

void X11EventLoop::addHandler(std::function<void(const xcb_generic_event_t&)> handler)
{
    m_handlers.push_back(std::move(handler));
}

void X11EventLoop::setConnectionLostHandler(std::function<void()> handler)
{
    m_onConnectionLost = std::move(handler);
}

void X11EventLoop::start()
{
    m_thread = std::thread([this] { run(); });
}

void X11EventLoop::stop(std::chrono::milliseconds patience)
{
    {
        const std::scoped_lock lock(m_mutex);
        m_stopping = true;
    }
    if (!m_thread.joinable())
        return;
    wake();
    if (m_ended.get_future().wait_for(patience) == std::future_status::timeout)
        ::shutdown(xcb_get_file_descriptor(m_connection), SHUT_RDWR);
    m_thread.join();
}

void X11EventLoop::post(std::function<void()> work)
{
    {
        const std::scoped_lock lock(m_mutex);
        if (m_stopping)
            return;
        m_posted.push_back(std::move(work));
    }
    wake();
}

X11EventLoop::TimerId X11EventLoop::runAt(TimePoint when, std::function<void()> call)
{
    return m_deadlines.add(when, std::move(call));
}

void X11EventLoop::run()
{
    pthread_setname_np(pthread_self(), m_name.left(15).constData());
    blockBrokenPipeSignal();
    while (turn())
        sleepUntilNeeded();
    m_ended.set_value();
}

/// @returns false when the thread is to end.
bool X11EventLoop::turn()
{
    bool more = true;
    while (more) {
        bool stopping = false;
        {
            const std::scoped_lock lock(m_mutex);
            stopping = m_stopping;
        }
        runPosted();
        if (stopping) {
            xcb_flush(m_connection);
            return false;
        }
        m_deadlines.runDue(std::chrono::steady_clock::now());
        more = dispatchEvents();
        noticeLoss();
    }
    return true;
}

void X11EventLoop::runPosted()
{
    std::vector<std::function<void()>> posted;
    {
        const std::scoped_lock lock(m_mutex);
        posted.swap(m_posted);
    }
    for (const std::function<void()>& work : posted)
        work();
}

/// @returns whether there may be more. Reading a reply and flushing both queue events inside xcb, where
/// poll() does not see them, so the queue is looked at once more after the flush.
bool X11EventLoop::dispatchEvents()
{
    if (m_lost)
        return false;
    const auto dispatch = [this](xcb_generic_event_t* received) {
        const XcbReply<xcb_generic_event_t> event(received);
        for (const auto& handler : m_handlers)
            handler(*event);
    };
    for (int served = 0; served < kEventsPerTurn; ++served) {
        if (xcb_generic_event_t* event = xcb_poll_for_event(m_connection)) {
            dispatch(event);
            continue;
        }
        xcb_flush(m_connection);
        xcb_generic_event_t* event = xcb_poll_for_queued_event(m_connection);
        if (event == nullptr)
            return false;
        dispatch(event);
    }
    return true;
}

void X11EventLoop::noticeLoss()
{
    if (m_lost || isConnected())
        return;
    m_lost = true;
    if (m_onConnectionLost)
        m_onConnectionLost();
}

void X11EventLoop::sleepUntilNeeded()
{
    // A negative descriptor is skipped: a dead connection would wake us again and again.
    const int serverDescriptor = m_lost ? -1 : xcb_get_file_descriptor(m_connection);
    pollfd descriptors[] = {{m_wakeDescriptor, POLLIN, 0}, {serverDescriptor, POLLIN, 0}};
    const auto next = m_deadlines.next();
    const int timeout = next ? millisecondsUntil(*next) : -1;
    while (::poll(descriptors, 2, timeout) < 0 && errno == EINTR) {
    }
    eventfd_t count = 0;
    ::eventfd_read(m_wakeDescriptor, &count);
}

void X11EventLoop::wake()
{
    ::eventfd_write(m_wakeDescriptor, 1);
}

} // namespace tessary
