#include "app/HotKeyShortcut.h"

#include <QHash>
#include <QList>

#include <limits>

namespace tessary {
namespace {

constexpr quint32 kControlOption = HotKeyModifier::kControl | HotKeyModifier::kOption;
constexpr QLatin1String kDisabled("disabled");
constexpr QLatin1String kVersion("v2");

struct LegacyKey {
    QLatin1String name;
    quint32 keyCode;
};
constexpr LegacyKey kLegacyKeys[] = {{QLatin1String("Space"), 49}, {QLatin1String("R"), 15},
                                     {QLatin1String("W"), 13},     {QLatin1String("H"), 4},
                                     {QLatin1String("P"), 35},     {QLatin1String("O"), 31}};

std::optional<HotKeyShortcut> legacyShortcut(const QString& text)
{
    for (const LegacyKey& key : kLegacyKeys) {
        if (text == QLatin1String("option") + key.name)
            return HotKeyShortcut{key.keyCode, HotKeyModifier::kOption, key.name};
        if (text == QLatin1String("controlOption") + key.name)
            return HotKeyShortcut{key.keyCode, kControlOption, key.name};
    }
    return std::nullopt;
}

/// At most four pieces, empty ones dropped; the fourth keeps whatever follows.
QStringList pieces(const QString& text)
{
    QStringList found;
    qsizetype start = 0;
    while (start < text.size()) {
        if (found.size() == 3) {
            found.append(text.mid(start));
            break;
        }
        qsizetype end = text.indexOf(QLatin1Char('|'), start);
        end = end < 0 ? text.size() : end;
        if (end > start)
            found.append(text.mid(start, end - start));
        start = end + 1;
    }
    return found;
}

std::optional<quint32> decimalNumber(QString text)
{
    if (text.startsWith(QLatin1Char('+')))
        text.remove(0, 1);
    if (text.isEmpty())
        return std::nullopt;
    quint64 number = 0;
    for (const QChar digit : text) {
        if (digit < u'0' || digit > u'9')
            return std::nullopt;
        number = number * 10 + static_cast<quint64>(digit.unicode() - u'0');
        if (number > std::numeric_limits<quint32>::max())
            return std::nullopt;
    }
    return static_cast<quint32>(number);
}

} // namespace

QString HotKeyShortcut::rawValue() const
{
    if (!keyCode)
        return kDisabled;
    return QStringLiteral("v2|%1|%2|").arg(*keyCode).arg(modifiers) + keyLabel;
}

std::optional<HotKeyShortcut> HotKeyShortcut::fromRawValue(const QString& text)
{
    if (text == kDisabled)
        return HotKeyShortcut{};
    if (const std::optional<HotKeyShortcut> legacy = legacyShortcut(text))
        return legacy;
    const QStringList parts = pieces(text);
    if (parts.size() != 4 || parts.at(0) != kVersion)
        return std::nullopt;
    const std::optional<quint32> key = decimalNumber(parts.at(1));
    const std::optional<quint32> mask = decimalNumber(parts.at(2));
    if (!key || !mask)
        return std::nullopt;
    return HotKeyShortcut{*key, *mask, parts.at(3)};
}

QString HotKeyShortcut::modifierTitle() const
{
    QString title;
    if ((modifiers & HotKeyModifier::kControl) != 0)
        title += u'⌃';
    if ((modifiers & HotKeyModifier::kOption) != 0)
        title += u'⌥';
    if ((modifiers & HotKeyModifier::kShift) != 0)
        title += u'⇧';
    if ((modifiers & HotKeyModifier::kCommand) != 0)
        title += u'⌘';
    return title;
}

std::optional<quint32> HotKeyShortcut::carbonModifiers(Qt::KeyboardModifiers held)
{
    quint32 mask = 0;
    mask |= held.testFlag(Qt::ControlModifier) ? HotKeyModifier::kControl : 0;
    mask |= held.testFlag(Qt::AltModifier) ? HotKeyModifier::kOption : 0;
    mask |= held.testFlag(Qt::ShiftModifier) ? HotKeyModifier::kShift : 0;
    mask |= held.testFlag(Qt::MetaModifier) ? HotKeyModifier::kCommand : 0;
    return mask != 0 ? std::optional(mask) : std::nullopt;
}

QString HotKeyShortcut::label(quint32 keyCode, const QString& characters)
{
    static const QHash<quint32, QString> names{{36, QStringLiteral("↩")},     {48, QStringLiteral("⇥")},
                                               {49, QStringLiteral("Space")}, {51, QStringLiteral("⌫")},
                                               {53, QStringLiteral("Esc")},   {117, QStringLiteral("⌦")},
                                               {123, QStringLiteral("←")},    {124, QStringLiteral("→")},
                                               {125, QStringLiteral("↓")},    {126, QStringLiteral("↑")}};
    if (const auto name = names.constFind(keyCode); name != names.constEnd())
        return *name;
    return characters.isEmpty() ? QStringLiteral("Key") : characters.toUpper();
}

size_t qHash(const HotKeyShortcut& shortcut, size_t seed) noexcept
{
    return qHashMulti(seed, shortcut.keyCode.value_or(0), shortcut.keyCode.has_value(), shortcut.modifiers,
                      shortcut.keyLabel);
}

} // namespace tessary
