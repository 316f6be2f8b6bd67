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
    /// Succeeds unless `refuseWrites()`; the contents are there, and counted, when the task ends.
    [[nodiscard]] QCoro::Task<bool> writeText(QString text, PasteboardReach reach) override;
    /// Reads the file as it is; one that is missing or empty is refused. A file whose
    /// name ends with ".png" is offered as PNG, any other as bitmap.
    [[nodiscard]] QCoro::Task<bool> writeImage(QString path, PasteboardReach reach) override;
    [[nodiscard]] QCoro::Task<> handOver() override;

    /// Another program copies. The same contents again are a change too.
    void setContents(Contents contents);
    void setText(const QString& text) { setContents({{PasteboardType::Text, text.toUtf8()}}); }
    void setPng(const QByteArray& png) { setContents({{PasteboardType::Png, png}}); }
    void setBitmap(const QByteArray& bitmap) { setContents({{PasteboardType::Bitmap, bitmap}}); }
    void setSupport(Support support) { m_support = std::move(support); }

    void refuseWrites() { m_refusesWrites = true; }
    /// What may be pasted now, by us or another program.
    [[nodiscard]] const Contents& contents() const { return m_contents; }
    [[nodiscard]] QString text() const { return QString::fromUtf8(m_contents.value(PasteboardType::Text)); }
    /// What a middle click would insert, as far as we wrote it.
    [[nodiscard]] const Contents& selection() const { return m_selection; }
    [[nodiscard]] int handOvers() const { return m_handOvers; }
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

    QCoro::Task<bool> write(Contents contents, PasteboardReach reach);

    Support m_support;
    qint64 m_changeCount = 0;
    qint64 m_releasedUpTo = -1;
    Contents m_contents;
    Contents m_selection;
    bool m_refusesWrites = false;
    int m_handOvers = 0;
    bool m_held = false;
    bool m_isFetching = false;
    std::vector<std::coroutine_handle<>> m_waiting;
    QList<qint64> m_released;
    QList<PasteboardType> m_reads;
};

} // namespace tessary::testing
