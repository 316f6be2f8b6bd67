#pragma once

#include <QObject>
#include <QPersistentModelIndex>
#include <QVariantAnimation>

namespace tessary {

class Theme;

/// How far the rows of a list are into a look that one of them has at a time, such as being selected: the
/// one that has it fades in while the one before fades out.
class RowFade : public QObject {
    Q_OBJECT
public:
    enum class Way { Fade, Jump };

    explicit RowFade(const Theme& theme, QObject* parent = nullptr);

    /// An invalid index takes the look from all.
    void moveTo(const QModelIndex& index, Way way);
    /// From 0 to 1.
    [[nodiscard]] double of(const QModelIndex& index) const;

Q_SIGNALS:
    /// That row looks different from before.
    void changed(const QModelIndex& index);

private:
    [[nodiscard]] double progress() const;
    void tell();

    const Theme& m_theme;
    QPersistentModelIndex m_current;
    QPersistentModelIndex m_last;
    QVariantAnimation m_animation;
};

} // namespace tessary
