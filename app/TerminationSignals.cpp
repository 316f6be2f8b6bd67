#include "app/TerminationSignals.h"

#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

namespace tessary {
namespace {

constexpr std::array kSignals{SIGTERM, SIGINT, SIGHUP};

int wakeDescriptor = -1; // a signal handler has nothing else to find it by

void wake(int)
{
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(wakeDescriptor, &one, sizeof one);
}

} // namespace

TerminationSignals::TerminationSignals() : m_descriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    wakeDescriptor = m_descriptor;
    auto* notifier = new QSocketNotifier(m_descriptor, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        Q_EMIT received();
    });
    struct sigaction action {};
    action.sa_handler = &wake;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    for (const int signal : kSignals)
        ::sigaction(signal, &action, nullptr);
}

TerminationSignals::~TerminationSignals()
{
    for (const int signal : kSignals)
        std::signal(signal, SIG_DFL);
    ::close(m_descriptor);
}

} // namespace tessary
