#include "store/FtsExpression.h"

namespace tessary {

QString ftsExpression(const QStringList& terms)
{
    QStringList phrases;
    for (QString term : terms) {
        term.replace(u'"', QStringLiteral("\"\"")).remove(u'*');
        if (!term.isEmpty())
            phrases.append(u'"' + term + QStringLiteral("\"*"));
    }
    return phrases.join(QStringLiteral(" AND "));
}

} // namespace tessary
