#include "app/HotKeyShortcut.h"

#include <QStringList>

#include <limits>

namespace tessary {
namespace {

const QLatin1String kDisabled("disabled");
const QLatin1String kVersion("v2");

struct LegacyKey {
    QLatin1String name;
    quint32 keyCode;
};
constexpr LegacyKey kLegacyKeys[] = {
    {QLatin1String("Space"), 49}, {QLatin1String("R"), 15}, {QLatin1String("W"), 13},
    {QLatin1String("H"), 4},      {QLatin1String("P"), 35}, {QLatin1String("O"), 31},
};

/// "optionR" and "controlOptionR", for each key that could be chosen then.
std::optional<HotKeyShortcut> legacyShortcut(const QString& text)
{
    for (const LegacyKey& key : kLegacyKeys) {
        if (text == QLatin1String("option") + key.name)
            return HotKeyShortcut{key.keyCode, HotKeyShortcut::Option, key.name};
        if (text == QLatin1String("controlOption") + key.name)
            return HotKeyShortcut{key.keyCode, HotKeyShortcut::Control | HotKeyShortcut::Option, key.name};
    }
    return std::nullopt;
}

/// At most that many non-empty pieces; the last keeps what follows it, without leading separators.
QStringList pieces(QStringView text, QChar separator, qsizetype maximum)
{
    QStringList result;
    while (result.size() < maximum - 1) {
        const qsizetype end = text.indexOf(separator);
        if (end < 0)
            break;
        if (end > 0)
            result.append(text.first(end).toString());
        text = text.sliced(end + 1);
    }
    if (result.size() == maximum - 1) {
        while (text.startsWith(separator))
            text = text.sliced(1);
    }
    if (!text.isEmpty())
        result.append(text.toString());
    return result;
}

/// ASCII digits only, after an optional plus sign.
std::optional<quint32> number(QStringView text)
{
    if (text.startsWith(u'+'))
        text = text.sliced(1);
    if (text.isEmpty())
        return std::nullopt;
    quint64 value = 0;
    for (const QChar digit : text) {
        if (digit < u'0' || digit > u'9')
            return std::nullopt;
        value = value * 10 + static_cast<quint64>(digit.unicode() - u'0');
        if (value > std::numeric_limits<quint32>::max())
            return std::nullopt;
    }
    return static_cast<quint32>(value);
}

} // namespace

QString HotKeyShortcut::rawValue() const
{
    if (!keyCode)
        return kDisabled;
    return QStringList{kVersion, QString::number(*keyCode), QString::number(modifiers), keyLabel}.join(u'|');
}

std::optional<HotKeyShortcut> HotKeyShortcut::fromRawValue(const QString& text)
{
    if (text == kDisabled)
        return HotKeyShortcut{};
    if (const std::optional<HotKeyShortcut> legacy = legacyShortcut(text))
        return legacy;
    const QStringList parts = pieces(text, u'|', 4);
    if (parts.size() != 4 || parts.at(0) != kVersion)
        return std::nullopt;
    const std::optional<quint32> key = number(parts.at(1));
    const std::optional<quint32> mask = number(parts.at(2));
    if (!key || !mask)
        return std::nullopt;
    return HotKeyShortcut{*key, *mask, parts.at(3)};
}

QString HotKeyShortcut::modifierTitle() const
{
    QString title;
    if ((modifiers & Control) != 0)
        title += u'⌃';
    if ((modifiers & Option) != 0)
        title += u'⌥';
    if ((modifiers & Shift) != 0)
        title += u'⇧';
    if ((modifiers & Command) != 0)
        title += u'⌘';
    return title;
}

std::optional<quint32> HotKeyShortcut::carbonModifiers(Qt::KeyboardModifiers held)
{
    quint32 mask = 0;
    if (held.testFlag(Qt::ControlModifier))
        mask += Control;
    if (held.testFlag(Qt::AltModifier))
        mask += Option;
    if (held.testFlag(Qt::ShiftModifier))
        mask += Shift;
    if (held.testFlag(Qt::MetaModifier))
        mask += Command;
    if (mask == 0)
        return std::nullopt;
    return mask;
}

QString HotKeyShortcut::label(quint32 keyCode, const QString& characters)
{
    switch (keyCode) {
    case 36:
        return QStringLiteral("↩");
    case 48:
        return QStringLiteral("⇥");
    case 49:
        return QStringLiteral("Space");
    case 51:
        return QStringLiteral("⌫");
    case 53:
        return QStringLiteral("Esc");
    case 117:
        return QStringLiteral("⌦");
    case 123:
        return QStringLiteral("←");
    case 124:
        return QStringLiteral("→");
    case 125:
        return QStringLiteral("↓");
    case 126:
        return QStringLiteral("↑");
    default:
        return characters.isEmpty() ? QStringLiteral("Key") : characters.toUpper();
    }
}

} // namespace tessary
