#pragma once

#include "ui/kit/ThemeColours.h"

#include <QFont>
#include <QObject>
#include <QPalette>

#include <chrono>

namespace tessary {

/// What every window looks like: colours, type, motion. Handed to each control; outlives them. Lengths are
/// logical pixels.
class Theme : public QObject {
    Q_OBJECT
public:
    static constexpr int kPanelRadius = 16;
    static constexpr int kCardRadius = 10;
    static constexpr int kMenuRadius = 10;
    static constexpr int kRowRadius = 8;
    static constexpr int kControlRadius = 6;
    static constexpr int kCapRadius = 4;

    static constexpr int kSearchSize = 20; ///< Type sizes.
    static constexpr int kTitleSize = 15;
    static constexpr int kBodySize = 13;
    static constexpr int kCaptionSize = 12;
    static constexpr int kCapSize = 11;

    static constexpr std::chrono::milliseconds kFade{120};   ///< Hover and selection.
    static constexpr std::chrono::milliseconds kBanner{160}; ///< Banners that come and go.

    explicit Theme(QObject* parent = nullptr);

    [[nodiscard]] const ThemeColours& colours() const { return m_colours; }
    [[nodiscard]] bool isDark() const { return m_isDark; }
    /// Around what is selected on the screen, whatever is beneath: the desktop's accent, or a blue.
    [[nodiscard]] QColor overlayOutline() const { return m_accent.value_or(QColor(0x4C, 0x83, 0xF5)); }
    /// How long an animation of that length takes: not at all where the desktop asks for no motion.
    [[nodiscard]] std::chrono::milliseconds duration(std::chrono::milliseconds wanted) const;
    /// By how much the person wants text larger than it is designed, from 0.5 to 3.
    [[nodiscard]] double textScale() const { return m_textScale; }
    /// A length that holds text, as it is with the person's text size.
    [[nodiscard]] int scaled(int pixels) const { return qRound(pixels * m_textScale); }
    /// The height of something that is designed so high around text lines of that height together: the lines
    /// grow with the person's text size, the room around them stays.
    [[nodiscard]] int fitting(int height, int lines) const { return height - lines + scaled(lines); }
    /// The desktop's family, then the ones for Chinese and Japanese.
    /// @param pixelSize as designed; the font has it as the person wants it.
    [[nodiscard]] QFont font(int pixelSize, QFont::Weight weight = QFont::Normal) const;
    /// The colours as Qt's own widgets take them.
    [[nodiscard]] QPalette palette() const;

    void setDark(bool isDark);
    void setAccent(const std::optional<QColor>& accent);
    void setTextScale(double scale);
    void setReducedMotion(bool isReduced);

Q_SIGNALS:
    void changed();

private:
    void update();

    bool m_isDark = false;
    bool m_reducesMotion = false;
    bool m_hasDemiBold;
    double m_textScale = 1;
    std::optional<QColor> m_accent;
    ThemeColours m_colours;
};

} // namespace tessary
