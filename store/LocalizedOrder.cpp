#include "store/LocalizedOrder.h"

#include <unicode/coll.h>
#include <unicode/locid.h>

namespace tessary {
namespace {

/// That of the environment. The "C" locale puts all capitals before all small letters whatever it is asked,
/// and no person's language does.
icu::Locale personsLocale()
{
    const icu::Locale locale = icu::Locale::getDefault();
    return QByteArrayView(locale.getVariant()) == "POSIX" ? icu::Locale::getRoot() : locale;
}

std::unique_ptr<icu::Collator> caseInsensitiveCollator()
{
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(personsLocale(), status));
    if (U_FAILURE(status))
        return nullptr;
    collator->setStrength(icu::Collator::SECONDARY);
    return collator;
}

} // namespace

QStringList localizedOrder(QStringList texts)
{
    const std::unique_ptr<icu::Collator> collator = caseInsensitiveCollator();
    const auto isBefore = [&collator](const QString& one, const QString& other) {
        UErrorCode status = U_ZERO_ERROR;
        const int order = collator ? collator->compare(reinterpret_cast<const UChar*>(one.utf16()),
                                                       static_cast<int32_t>(one.size()),
                                                       reinterpret_cast<const UChar*>(other.utf16()),
                                                       static_cast<int32_t>(other.size()), status)
                                   : one.compare(other, Qt::CaseInsensitive);
        return order != 0 ? order < 0 : one < other;
    };
    std::sort(texts.begin(), texts.end(), isBefore);
    return texts;
}

} // namespace tessary
