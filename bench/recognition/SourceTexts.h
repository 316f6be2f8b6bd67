#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

namespace tessary::bench {

/// The texts of one half, as `collect-texts` found them; each is handed out once.
class SourceTexts {
public:
    /// @throws std::runtime_error when the file is not what `collect-texts` writes.
    static SourceTexts read(const QString& path, const QString& half);

    /// The next paragraph of a script ("zh-Hans", "zh-Hant", "ja", "en"); with "mixed-" before it
    /// one that is half Latin.
    [[nodiscard]] QString passage(const QString& script);
    /// The next few words that could stand on a button.
    [[nodiscard]] QString label(const QString& script);
    /// The next lines of code.
    [[nodiscard]] QString code();

private:
    /// Goes round when there are no more.
    [[nodiscard]] QString next(const QString& kind);

    QMap<QString, QStringList> m_texts; // by "passages/zh-Hans" and the like
    QMap<QString, qsizetype> m_used;
};

} // namespace tessary::bench
