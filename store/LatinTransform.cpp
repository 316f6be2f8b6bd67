#include "store/LatinTransform.h"

#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/translit.h>
#include <unicode/unistr.h>

namespace tessary {
namespace {

icu::UnicodeString withoutMarks(const icu::UnicodeString& text)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString decomposed = icu::Normalizer2::getNFDInstance(status)->normalize(text, status);
    icu::UnicodeString bare;
    for (int32_t i = 0; i < decomposed.length(); i = decomposed.moveIndex32(i, 1)) {
        const UChar32 character = decomposed.char32At(i);
        if (u_charType(character) != U_NON_SPACING_MARK)
            bare.append(character);
    }
    const icu::UnicodeString composed = icu::Normalizer2::getNFCInstance(status)->normalize(bare, status);
    return U_SUCCESS(status) ? composed : text;
}

} // namespace

struct LatinTransform::Transliterator {
    std::unique_ptr<icu::Transliterator> anyToLatin;
};

LatinTransform::LatinTransform() = default;
LatinTransform::~LatinTransform() = default;

QString LatinTransform::romanised(QStringView text)
{
    if (!m_transliterator) {
        UErrorCode status = U_ZERO_ERROR;
        m_transliterator = std::make_unique<Transliterator>();
        m_transliterator->anyToLatin.reset(
            icu::Transliterator::createInstance("Any-Latin", UTRANS_FORWARD, status));
    }
    icu::UnicodeString latin(text.utf16(), static_cast<int32_t>(text.size()));
    if (m_transliterator->anyToLatin)
        m_transliterator->anyToLatin->transliterate(latin);
    icu::UnicodeString result = withoutMarks(latin);
    result.toLower(icu::Locale::getRoot());
    return QString(reinterpret_cast<const QChar*>(result.getBuffer()), result.length());
}

} // namespace tessary
