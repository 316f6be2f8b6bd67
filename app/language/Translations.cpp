#include "app/language/Translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>

namespace tessary {

Translations::Translations(InterfaceLanguage language)
{
    switch (language) {
    case InterfaceLanguage::Chinese:
        if (m_qt.load(QStringLiteral("qtbase_zh_CN"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
            QCoreApplication::installTranslator(&m_qt);
        return;
    case InterfaceLanguage::English:
        if (m_ours.load(QStringLiteral("tessary_en"), QStringLiteral(":/tessary/translations")))
            QCoreApplication::installTranslator(&m_ours);
        return;
    }
}

Translations::~Translations()
{
    QCoreApplication::removeTranslator(&m_ours);
    QCoreApplication::removeTranslator(&m_qt);
}

} // namespace tessary
