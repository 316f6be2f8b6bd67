#pragma once

#include <QByteArray>
#include <QHash>
#include <QVariantMap>

namespace tessary {

/// What a search on the command line asks for, page by page.
class SearchOptions {
public:
    /// @throws CommandError (WrongUse).
    [[nodiscard]] static SearchOptions from(const QHash<QByteArray, QByteArray>& options);

    /// The beginnings of texts will do.
    void cutTexts();
    /// How many items are still wanted.
    [[nodiscard]] int remaining() const { return m_limit; }
    /// That many have come.
    void advance(int count);
    /// As the bus takes them.
    [[nodiscard]] QVariantMap asked() const;

private:
    QVariantMap m_fixed;
    int m_limit = 100;
    int m_offset = 0;
};

} // namespace tessary
