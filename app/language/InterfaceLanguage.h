#pragma once

#include <QString>

namespace tessary {

/// The languages that windows and messages are written in.
enum class InterfaceLanguage {
    Chinese, ///< What the sources are written in, and everybody's who has not asked for another.
    English
};

/// What the environment says about languages, unset variables being empty.
struct LocaleVariables {
    QString language; ///< LANGUAGE: several, the dearest first, separated by colons.
    QString all;      ///< LC_ALL
    QString messages; ///< LC_MESSAGES
    QString base;     ///< LANG

    [[nodiscard]] static LocaleVariables ofEnvironment();
};

/// The first language asked for that there is, by the rules of gettext: the list counts only beside a locale
/// that is not C or POSIX.
[[nodiscard]] InterfaceLanguage interfaceLanguage(const LocaleVariables& variables);

} // namespace tessary
