#pragma once

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QTest>

namespace tessary::testing {

/// Lets threads that outlive their owners, as those of expendable lanes do, end, and what they sent home
/// arrive: a leak check that follows must find neither half of it, nor a thread that is just ending. What
/// hangs on purpose, or stays for good, is waited for a moment only.
inline void letThreadsEnd()
{
#if defined(__SANITIZE_ADDRESS__)
    const auto isAlone = [] {
        return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size() ==
               1;
    };
    (void)QTest::qWaitFor(isAlone, 300);
    for (int turn = 0; turn < 5; ++turn) // what arrives may send something on
        QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
#endif
}

} // namespace tessary::testing
