#pragma once

#include <QByteArray>
#include <QList>
#include <QSet>

namespace tessary {

/// What an owner of the clipboard offers, reduced to what we take, each list in the order to try.
struct ClipboardTargets {
    QList<QByteArray> png;
    QList<QByteArray> bitmap;
    QList<QByteArray> text;
    /// The owner says how secret the contents are; that has to be read before anything else.
    bool hasSecrecyHint = false;

    /// Every target name that matters to us, the hint's included.
    [[nodiscard]] static QList<QByteArray> knownNames();
    /// @param offered names, of which unknown ones are ignored.
    [[nodiscard]] static ClipboardTargets choose(const QSet<QByteArray>& offered);
    /// For an owner that does not answer what it offers: the text targets of old.
    [[nodiscard]] static ClipboardTargets unannounced();
};

inline constexpr char kSecrecyHintTarget[] = "x-kde-passwordManagerHint";
inline constexpr char kLatin1TextTarget[] = "STRING";

} // namespace tessary
