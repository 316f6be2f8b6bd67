#pragma once

#include "platform/Pasteboard.h"

#include <QHash>
#include <QList>

#include <coroutine>
#include <vector>

namespace tessary::testing {

/// A clipboard that a test fills. Answers come after a turn of the event loop, or when the test says so.
class FakePasteboard : public Pasteboard {
public:
    using Contents = QHash<PasteboardType, QByteArray>;

    [[nodiscard]] Support support() const override { return m_support; }
    [[nodiscard]] qint64 changeCount() const override { return m_changeCount; }
    [[nodiscard]] QCoro::Task<std::optional<QByteArray>> data(qint64 changeCount,
                                                              PasteboardType type) override;
    void setFetching(bool isFetching) override { m_isFetching = isFetching; }
    void release(qint64 changeCount) override;

    /// Another program copies. The same contents again are a change too.
    void setContents(Contents contents);
    void setText(const QString& text) { setContents({{PasteboardType::Text, text.toUtf8()}}); }
    void setPng(const QByteArray& png) { setContents({{PasteboardType::Png, png}}); }
    void setBitmap(const QByteArray& bitmap) { setContents({{PasteboardType::Bitmap, bitmap}}); }
    void setSupport(Support support) { m_support = std::move(support); }

    [[nodiscard]] bool isFetching() const { return m_isFetching; }
    /// From now on nothing is answered until `letGo()`: a slow owner.
    void hold() { m_held = true; }
    void letGo();
    /// Readers that wait for `letGo()`.
    [[nodiscard]] int waiting() const { return static_cast<int>(m_waiting.size()); }
    /// The change counts released, in order.
    [[nodiscard]] const QList<qint64>& released() const { return m_released; }
    /// What was asked for, in order.
    [[nodiscard]] const QList<PasteboardType>& reads() const { return m_reads; }

private:
    class Gate;

    Support m_support;
    qint64 m_changeCount = 0;
    qint64 m_releasedUpTo = -1;
    Contents m_contents;
    bool m_held = false;
    bool m_isFetching = false;
    std::vector<std::coroutine_handle<>> m_waiting;
    QList<qint64> m_released;
    QList<PasteboardType> m_reads;
};

} // namespace tessary::testing
