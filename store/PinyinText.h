#pragma once

#include <QString>
#include <QStringView>

#include <memory>

namespace tessary {

/// Romanised search text: what lets "zhongguo" and "zhong guo" find 中国. One thread at a time.
///
/// ICU transliterates a whole text in more than linear time, so Han characters go through a table that is
/// filled from ICU as they turn up, ASCII is passed on, and only runs of other scripts are given to ICU,
/// in pieces.
class PinyinText {
public:
    PinyinText();
    ~PinyinText();
    PinyinText(PinyinText&&) noexcept;
    PinyinText& operator=(PinyinText&&) noexcept;

    /// The text in Latin script without combining marks and lower-cased, a space, and the same with only
    /// its letters and numbers. A Han syllable is separated from neighbouring letters and numbers by a
    /// space. The empty text gives a single space.
    [[nodiscard]] QString searchText(QStringView text);

private:
    class Romanizer;
    std::unique_ptr<Romanizer> m_romanizer;
};

} // namespace tessary
