#pragma once

#include <QString>
#include <QStringView>

#include <memory>

namespace tessary {

/// ICU's transliteration to Latin script, without combining marks, lower-cased. Made on first use (10 ms).
/// One thread at a time.
class LatinTransform {
public:
    LatinTransform();
    ~LatinTransform();

    /// @returns the text itself, lower-cased, where ICU has no transliterator.
    [[nodiscard]] QString romanised(QStringView text);

private:
    struct Transliterator;
    std::unique_ptr<Transliterator> m_transliterator;
};

} // namespace tessary
