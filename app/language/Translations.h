#pragma once

#include "app/language/InterfaceLanguage.h"

#include <QTranslator>

namespace tessary {

/// While it lives, the application speaks that language: our texts, and those of Qt's own dialogs and menus.
/// To be made right after the application and before any text is asked for.
class Translations {
public:
    explicit Translations(InterfaceLanguage language);
    ~Translations();
    Q_DISABLE_COPY_MOVE(Translations)

private:
    QTranslator m_ours;
    QTranslator m_qt; // English needs none, and without the package the texts stay English
};

} // namespace tessary
